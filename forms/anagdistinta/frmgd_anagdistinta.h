#pragma once

#include "frame/formframe.h"
#include "platform/db/recordset.h"

#include <QHash>
#include <optional>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace fw {
class GridNavigator;
class LookupEdit;
class RecordsetGrid;
class WorkflowStateControl;
} // namespace fw

// The maintenance of the company's classification types (GD01_TIPODISTINTA), opened from the
// tree editor. Its procedures live in one source file per concern: the frame's part and the
// controls here, lookups and decodes in frmgd_anagdistinta_decodifiche.cpp, saving, deleting and
// the state in frmgd_anagdistinta_salvataggio.cpp.
class FRMGD_ANAGDISTINTA : public FormFrame
{
    Q_OBJECT

public:
    explicit FRMGD_ANAGDISTINTA(QWidget *parent = nullptr);
    ~FRMGD_ANAGDISTINTA() override;

    // The type shown once the form is ready; none: the first type.
    void setIdDistinta(std::optional<qint64> id) { m_idDistinta = id; }
    std::optional<qint64> idDistinta() const { return m_idDistinta; }

    void ImpostaFME_DISTINTE();
    void CaricaComboTipoSoggetto();
    void TXT_GD01_CODICE_AfterItem();

    // --- lookups and decodes (frmgd_anagdistinta_decodifiche.cpp)
    void DIVISIONI_Lookup();
    void DIVISIONI_Decode();
    void PRIORITA_Lookup();
    void PRIORITA_Decode();
    QVariant DecodeCodiceDivisione(const QString &codice); // CO1A_IDDIV; null when none
    QString Get_CodiceDivisione(const QVariant &idDivisione);
    QVariant Get_MG3G_ID_LP09(const QString &codice); // LP09_ID; null when none
    QString Get_LP09_CODICE(const QVariant &idPriorita);
    // The division and priority texts of the grid, read once for every value of the rows.
    void CaricaDecodificheGriglia();
    QString testoDivisione(const QVariant &idDivisione) const;
    QString testoPriorita(const QVariant &idPriorita) const;

    // --- saving, deleting, printing and the state (frmgd_anagdistinta_salvataggio.cpp)
    void StampaTipiDistinta();
    void cmdAssegnaStato_Click();

protected:
    void loadForm() override;
    bool activateForm() override;
    void writeFixedFilterFields(db::Recordset &recordset) override;
    QString companyChangeText() const override;
    void formClosing() override;
    void release(Release what) override;
    // A row someone else changed meanwhile is told to the user and read again; every other
    // failure goes to the error handler.
    bool stepOnRow(const QString &procedure, const std::function<void()> &statement) override;

private:
    // controls (frmgd_anagdistinta_layout.cpp)
    void creaControlli();
    void collegaEventi();

    // frame
    void posizionaSuDistinta();
    void mostraRiga();
    void FME_DISTINTE_ValidateRecord(bool &cancel);
    void FME_DISTINTE_BeforeUpdate(bool &cancel);
    void FME_DISTINTE_BeforeDelete(bool &cancel);
    void dopoSalvataggio();
    void GRIDNAV_ButtonClick(const QString &button, bool &cancel);
    void GRIDNAV_AfterButtonClick(const QString &button);
    void TXT_GD01_STATO_AfterItem(bool changedByUser);
    bool lasciaRiga();
    bool rifiuta(const QString &text, QWidget *focus);
    QString codiceDigitato(const QLineEdit *field) const;
    void decodifica(const QString &procedure, const QLineEdit *field, QLabel *label,
                    const std::function<QString(const QString &)> &statement, const QString &descriptionField,
                    const QString &missing);

    // --- controls, named as the form names them
    fw::GridNavigator *GRIDNAV = nullptr;
    QPushButton *cmdAssegnaStato = nullptr;
    QLineEdit *TXT_GD01_CODICE = nullptr;
    QLineEdit *TXT_GD01_DESCR = nullptr;
    QComboBox *CMB_GD01_INDTIPOSOGG = nullptr;
    fw::LookupEdit *TXT_GD01_IDDIV_CO1A = nullptr;
    QLabel *TXT_DESCRDIV = nullptr;
    fw::LookupEdit *TXT_GD01_ID_LP09 = nullptr;
    QLabel *TXT_DESCRLISTINO = nullptr;
    fw::WorkflowStateControl *TXT_GD01_STATO = nullptr;
    fw::RecordsetGrid *GRID_TIPODISTINTA = nullptr;

    std::optional<qint64> m_idDistinta;
    QHash<qint64, QString> m_testiDivisione; // grid texts by CO1A_IDDIV
    QHash<qint64, QString> m_testiPriorita;  // grid texts by LP09_ID
};
