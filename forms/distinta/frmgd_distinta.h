#pragma once

#include "forms/distinta/parametri.h"
#include "frame/formframe.h"
#include "framework/export/exportfile.h"
#include "platform/db/recordset.h"

#include <QDate>
#include <memory>
#include <optional>

class QTabWidget;
class QWidget;

namespace fw {
class TreeListNode;
}

namespace distinta {
struct Parti;
}

// The classification tree editor, the form that the entry class opens.
//
// A composition of parts (distinta::Parti), each owning its controls, its state and its
// statements; the form lays them out, wires them together and keeps the procedures that span
// several of them and those that the module, the host and the other forms call.
class FRMGD_DISTINTA : public FormFrame
{
    Q_OBJECT

public:
    explicit FRMGD_DISTINTA(QWidget *parent = nullptr);
    ~FRMGD_DISTINTA() override;

    distinta::Parti &parti() const { return *m_parti; }

    void Form_Initialize();
    void ImpostaFME_DISTINTE();
    // The host's theme colours on the tree and on the master-data sheet; without a theme the
    // designed colours stay.
    void ColoriSTD();

    // chiave: the node to choose again after a rebuild, when it is still there.
    void InizializzaDistinte(const QString &chiave = {});
    void TVW_SELDISTINTE_Click();
    void CaricaDistinta();
    void CaricaAnagraficheDistinta();

    // Without a window: the type of that code chosen as a click would choose it, then its list
    // printed down to the level given (else the level the combo proposes), or exported (else the
    // whole tree) as of the date given. False, the reason told, when it cannot be done.
    bool StampaSenzaFinestra(const QString &codiceTipo, std::optional<int> livello, std::optional<QDate> giorno);
    // The classification's history from one day to another, by one user or by anyone, to a file.
    bool StoricoSenzaFinestra(const QString &codiceTipo, std::optional<QDate> dal, std::optional<QDate> al,
                              const QString &utente, const QString &percorso, fw::ExportFile::Format formato);
    // The classification's differences between two days, to a file.
    bool ConfrontoSenzaFinestra(const QString &codiceTipo, const QDate &a, const QDate &b, const QString &percorso,
                                fw::ExportFile::Format formato);
    // What is wrong in the company's classifications today (only in that type's, when a code is
    // given), to a file; written also when nothing is.
    bool VerificaSenzaFinestra(const QString &codiceTipo, const QString &percorso, fw::ExportFile::Format formato);
    // A file imported into the classification (only tried, with soloProva), the fate of each row
    // written to resoconto: 0 every row applied or applicable, 4 some refused, 1 nothing done.
    int ImportaSenzaFinestra(const QString &codiceTipo, const QString &file, bool soloProva, const QString &resoconto,
                             fw::ExportFile::Format formato);
    bool EsportaSenzaFinestra(const QString &codiceTipo, std::optional<int> livello, std::optional<QDate> giorno,
                              const QString &percorso, fw::ExportFile::Format formato);

    // What the parameters form reads and asks of the editor.
    db::RecordsetPtr nodi() const;
    const distinta::Parametri &parametri() const;
    void ApplicaEreditaPromozioni(qint64 idNodo, short regola);

protected:
    void loadForm() override;
    bool activateForm() override;
    QString companyChangeText() const override;
    void release(Release what) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    // Layout and wiring (frmgd_distinta_composizione.cpp).
    void creaControlli();
    QWidget *creaPannelloGestione();
    QWidget *creaPannelloDistinta();
    void collegaEventi();
    void impostaTastiera();
    void impostaOrdineTab();

    void TAB_VISUALIZZAGESTIONE_Click(int index);
    void TVW_DISTINTA_OnChangeNode(const fw::TreeListNode &previous, const fw::TreeListNode &current);
    // What can act now: adding needs a classification and ticked subjects, removing a node.
    void aggiornaComandi();
    // The subject of a result of the search across classifications, in its classification.
    void vaiAlNodo(int tipoSoggetto, const QString &distinta, const QString &codice);
    // A line of "Dove è usato" or of the check: its classification chosen as a click chooses it, then its
    // node; procedura names a failing search by subject to the error handler.
    void vaiAlLegame(const QString &chiaveTipo, qint64 idNodo, qint64 codice, const QString &procedura);
    // The tree, and the subject list when it shows, read again from the database.
    void ricarica();
    // The type of that code chosen for a run without a window; false, the reason told, when the
    // company has no such type, or senzaNodi when it has no nodes to show.
    // senzaNodi: what a classification without nodes is told; empty when nodes are not needed.
    bool scegliSenzaFinestra(const QString &codice, const QString &procedura, const QString &senzaNodi);

    QTabWidget *TAB_VISUALIZZAGESTIONE;
    std::unique_ptr<distinta::Parti> m_parti;
};
