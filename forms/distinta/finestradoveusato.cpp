#include "forms/distinta/finestradoveusato.h"

#include "framework/emptyviewhint.h"

#include <QHeaderView>
#include <QShortcut>
#include <QTableWidget>
#include <QVBoxLayout>

namespace distinta {

FinestraDoveUsato::FinestraDoveUsato(QWidget &editor, const QString &title, const QList<Uso> &usi)
    : QWidget(&editor, Qt::Window)
    , GRD_DOVEUSATO(new QTableWidget(0, int(DoveUsato::intestazioni().size())))
    , m_usi(usi)
{
    setObjectName(QStringLiteral("FRMGD_DOVEUSATO"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Dove è usato: ") + title);

    GRD_DOVEUSATO->setObjectName(QStringLiteral("GRD_DOVEUSATO"));
    GRD_DOVEUSATO->setHorizontalHeaderLabels(DoveUsato::intestazioni());
    GRD_DOVEUSATO->setEditTriggers(QAbstractItemView::NoEditTriggers);
    GRD_DOVEUSATO->setSelectionBehavior(QAbstractItemView::SelectRows);
    GRD_DOVEUSATO->setSelectionMode(QAbstractItemView::SingleSelection);
    GRD_DOVEUSATO->verticalHeader()->hide();
    GRD_DOVEUSATO->horizontalHeader()->setStretchLastSection(true);
    GRD_DOVEUSATO->setToolTip(QStringLiteral("Doppio clic o Invio: mostra il nodo nella distinta"));
    GRD_DOVEUSATO->setRowCount(int(m_usi.size()));
    for (int row = 0; row < m_usi.size(); ++row) {
        const QStringList testi = DoveUsato::testi(m_usi.at(row));
        for (int column = 0; column < testi.size(); ++column)
            GRD_DOVEUSATO->setItem(row, column, new QTableWidgetItem(testi.at(column)));
    }
    GRD_DOVEUSATO->resizeColumnsToContents();
    if (!m_usi.isEmpty())
        GRD_DOVEUSATO->setCurrentCell(0, 0);
    m_vuoto = new fw::EmptyViewHint(GRD_DOVEUSATO,
                                    [] { return QStringLiteral("Il soggetto non è in nessuna distinta."); });

    connect(GRD_DOVEUSATO, &QTableWidget::cellDoubleClicked, this, &FinestraDoveUsato::richiedi);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto *invio = new QShortcut(QKeySequence(key), GRD_DOVEUSATO);
        invio->setContext(Qt::WidgetShortcut);
        connect(invio, &QShortcut::activated, this, [this] { richiedi(GRD_DOVEUSATO->currentRow()); });
    }

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(GRD_DOVEUSATO);
    resize(900, 350);
}

FinestraDoveUsato::~FinestraDoveUsato()
{
    delete m_vuoto;
}

void FinestraDoveUsato::richiedi(int row)
{
    if (row >= 0 && row < m_usi.size())
        emit nodoRichiesto(m_usi.at(row).chiaveTipo, m_usi.at(row).idNodo);
}

} // namespace distinta
