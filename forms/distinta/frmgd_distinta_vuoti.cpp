// Empty areas say what to do next, and a search in the tree that finds nothing says so in its
// box (no dialog, as the search is meant to be quiet) until its text changes.
#include "forms/distinta/frmgd_distinta.h"

#include "framework/emptyviewhint.h"
#include "framework/recordsetgrid.h"
#include "framework/recordsetgridfiltermodel.h"
#include "framework/treelist/treelist.h"
#include "framework/treelist/treelistview.h"

#include <QLineEdit>
#include <QTreeWidget>

void FRMGD_DISTINTA::impostaIndicazioniVuote()
{
    auto *albero = new fw::EmptyViewHint(TVW_DISTINTA->view(), [this]() -> QString {
        const QString chiave = chiaveSelezionata();
        if (chiave.isEmpty() || chiave.startsWith(QLatin1Char('P')))
            return QStringLiteral("Scegliere una distinta nella pagina «Distinte».");
        return QStringLiteral("La distinta è vuota: spuntare i soggetti nella pagina «Anagrafiche» e premere «Aggiungi capostipite».");
    });
    auto *anagrafiche = new fw::EmptyViewHint(GRD_ANAGRAFICHEDISTINTA, [this]() -> QString {
        if (!m_anagrafiche)
            return QStringLiteral("Scegliere una distinta nella pagina «Distinte» per vedere i suoi soggetti.");
        if (m_anagrafiche->recordCount() == 0)
            return QStringLiteral("La ditta non ha soggetti di questo tipo.");
        return QStringLiteral("Nessun soggetto corrisponde al filtro.");
    });
    auto *ricerca = new fw::EmptyViewHint(GRD_CERCADISTINTA, [this]() -> QString {
        return m_risultatiRicerca ? QStringLiteral("Nessun nodo trovato: cambiare codice o ragione sociale.")
                                  : QStringLiteral("Indicare un codice o una ragione sociale e premere «Cerca».");
    });
    // The tree's text follows the chosen type.
    connect(TVW_SELDISTINTE, &QTreeWidget::itemSelectionChanged, albero, &fw::EmptyViewHint::refresh,
            Qt::QueuedConnection);
    Q_UNUSED(anagrafiche);
    Q_UNUSED(ricerca);

    connect(TXTCERCA, &QLineEdit::textChanged, this, [this] { segnalaRicercaSenzaEsito(false); });
    // A tree loaded or emptied changes what its tools can do.
    connect(TVW_DISTINTA->view()->model(), &QAbstractItemModel::modelReset, this, &FRMGD_DISTINTA::aggiornaComandiUsabilita,
            Qt::QueuedConnection);
}

// A coloured frame and a tooltip, as long as the text that found nothing stays.
void FRMGD_DISTINTA::segnalaRicercaSenzaEsito(bool senzaEsito)
{
    if (TXTCERCA->property("senzaEsito").toBool() == senzaEsito)
        return;
    TXTCERCA->setProperty("senzaEsito", senzaEsito);
    if (senzaEsito) {
        TXTCERCA->setProperty("suggerimento", TXTCERCA->toolTip());
        TXTCERCA->setStyleSheet(QStringLiteral("QLineEdit { border: 2px solid #c62828; background: #fdecea; }"));
        TXTCERCA->setToolTip(QStringLiteral("Nessun nodo trovato per «%1».").arg(TXTCERCA->text()));
    } else {
        TXTCERCA->setStyleSheet(QString());
        TXTCERCA->setToolTip(TXTCERCA->property("suggerimento").toString());
    }
}
