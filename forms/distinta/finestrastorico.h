#pragma once

#include "forms/distinta/modellostorico.h"
#include "framework/export/exportfile.h"

#include <QWidget>

class FormFrame;
class QComboBox;
class QLineEdit;
class QPushButton;
class QTableView;
class QToolButton;

namespace distinta {

// FRMGD_STORICO, "Storico": the changes of the open classification within two days, narrowed to
// a user and to an operation, in a window beside the editor. A double click leads to the line's
// node; CMD_ANNULLAOPERAZIONE undoes the chosen line's operation after a question that names
// whose it is and what it changes.
class FinestraStorico : public QWidget
{
    Q_OBJECT

public:
    FinestraStorico(FormFrame &form, qint64 typeId, const QString &title);

    // Reads the lines for the filters typed; false, with the reason told, when they are wrong.
    bool CMD_CERCASTORICO_Click();
    void CMD_ANNULLAOPERAZIONE_Click();
    void CMD_SALVASTORICO_Click(fw::ExportFile::Format formato);
    const ModelloStorico &modello() const { return m_modello; }
    QTableView *griglia() const { return GRD_STORICO; }

signals:
    void nodoRichiesto(qint64 codiceSoggetto);
    // The user confirmed the undo of an operation.
    void annullamentoRichiesto(qint64 idOperazione);

private:
    void aggiornaComandi();

    FormFrame &m_form;
    qint64 m_typeId;
    QString m_title;
    QLineEdit *TXT_DAL;
    QLineEdit *TXT_AL;
    QComboBox *CBO_UTENTE;
    QComboBox *CBO_OPERAZIONE;
    QPushButton *CMD_CERCASTORICO;
    QPushButton *CMD_ANNULLAOPERAZIONE;
    QToolButton *CMD_SALVASTORICO;
    QTableView *GRD_STORICO;
    ModelloStorico m_modello;
};

} // namespace distinta
