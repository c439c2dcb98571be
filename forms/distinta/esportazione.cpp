#include "forms/distinta/esportazione.h"

#include "forms/distinta/albero.h"
#include "forms/distinta/alladata.h"
#include "forms/distinta/livelli.h"
#include "forms/distinta/selettore.h"
#include "frame/formframe.h"
#include "framework/treelist/treelist.h"
#include "framework/treelist/treelistmodel.h"
#include "framework/workprogress.h"

#include <QDir>
#include <QToolButton>

namespace distinta {

namespace {

const QString procedureEsporta = QStringLiteral("Esporta");

// The columns that hold subject codes go out as numbers, so that a spreadsheet sorts them.
bool colonnaCodice(const QString &name)
{
    return name == QLatin1String("trGD02_CLIFOR_CG44") || name == QLatin1String("trGD02_CLIFORFATT_CG44");
}

QVariant comeData(const QVariant &value)
{
    if (value.isNull())
        return {};
    const QDate date = value.metaType().id() == QMetaType::QDateTime ? value.toDateTime().date() : value.toDate();
    return date.isValid() ? QVariant(date) : QVariant();
}

} // namespace

Esportazione::Esportazione(FormFrame &form, Albero &albero, Selettore &selettore)
    : m_form(form)
    , m_albero(albero)
    , m_selettore(selettore)
    , CMD_ESPORTA(fw::ExportFile::menuButton(
          QStringLiteral("CMD_ESPORTA"), QStringLiteral("Esp&orta"),
          QStringLiteral("Esporta la distinta come è mostrata (livelli e data) in Excel o in CSV (Alt+O)"), this,
          [this](fw::ExportFile::Format formato) { CMD_ESPORTA_Click(formato); }))
{

    // Nothing to export without nodes: the button follows the tree, as the print's does.
    fw::TreeList *tree = albero.widget();
    const auto aggiorna = [this, tree] { CMD_ESPORTA->setEnabled(tree->count() > 0); };
    QAbstractItemModel *model = tree->model();
    connect(model, &QAbstractItemModel::modelReset, this, aggiorna);
    connect(model, &QAbstractItemModel::rowsInserted, this, aggiorna);
    connect(model, &QAbstractItemModel::rowsRemoved, this, aggiorna);
    aggiorna();
}

void Esportazione::CMD_ESPORTA_Click(fw::ExportFile::Format formato)
{
    const db::RecordsetPtr nodi = m_albero.nodi();
    if (!nodi || nodi->isEmpty())
        return;
    QString nome = m_selettore.testoSelezionato();
    if (nome.isEmpty())
        nome = QStringLiteral("Distinta");
    if (const std::optional<QDate> giorno = m_albero.allaData().data())
        nome += QStringLiteral(" al ") + giorno->toString(Qt::ISODate);
    const QString percorso = fw::ExportFile::chooseInDocuments(&m_form, formato, nome);
    if (percorso.isEmpty())
        return;
    if (EsportaDistinta(percorso, formato, m_albero.livelli().testoLivello()))
        m_form.notifica(QStringLiteral("Distinta esportata nel file \"%1\".").arg(QDir::toNativeSeparators(percorso)));
}

QList<fw::ExportColumn> Esportazione::colonneEsportazione(QStringList &nomi) const
{
    fw::TreeList *tree = m_albero.widget();
    QList<fw::ExportColumn> colonne;
    for (int i = 0; i < tree->columnCount(); ++i) {
        const fw::TreeListColumn &column = tree->column(i);
        if (!column.visible)
            continue;
        fw::ExportCellKind kind = fw::ExportCellKind::Text;
        if (colonnaCodice(column.name))
            kind = fw::ExportCellKind::Number;
        else if (column.kind == fw::TreeListColumnKind::Date)
            kind = fw::ExportCellKind::Date;
        colonne << fw::ExportColumn {column.caption, kind};
        nomi << column.name;
    }
    return colonne;
}

bool Esportazione::EsportaDistinta(const QString &percorso, fw::ExportFile::Format formato, const QString &testoLivello)
{
    const db::RecordsetPtr nodi = m_albero.nodi();
    if (!nodi || nodi->isEmpty())
        return false;
    const QString problema = fw::ExportFile::problem(percorso);
    if (!problema.isEmpty()) {
        m_form.avviso(problema);
        return false;
    }
    short limite = 1;
    if (!m_form.step(procedureEsporta, [&] { limite = Livelli::limite(testoLivello); }))
        return false;

    QStringList nomi;
    const QList<fw::ExportColumn> colonne = colonneEsportazione(nomi);
    const std::unique_ptr<fw::TableWriter> writer = fw::ExportFile::writer(formato);

    fw::TreeList *tree = m_albero.widget();
    const QString titolo = m_selettore.testoSelezionato();
    const int count = tree->count();
    bool annullata = false;
    const bool scritta = m_form.step(procedureEsporta, [&] {
        writer->open(percorso, titolo, colonne);
        fw::WorkProgress progress(&m_form, QStringLiteral("Esportazione della distinta..."), count, true);
        QList<QVariant> valori(colonne.size());
        fw::TreeListNode node = tree->firstNode();
        for (int i = 0; node.isValid(); ++i, node = node.next()) {
            if (node.level() < limite) {
                for (qsizetype c = 0; c < colonne.size(); ++c) {
                    switch (colonne.at(c).kind) {
                    case fw::ExportCellKind::Number: valori[c] = node.value(nomi.at(c)); break;
                    case fw::ExportCellKind::Date: valori[c] = comeData(node.value(nomi.at(c))); break;
                    case fw::ExportCellKind::Text: valori[c] = tree->displayText(node, nomi.at(c)); break;
                    }
                }
                writer->writeRow(node.level(), valori);
            }
            if (!progress.advance(i + 1)) {
                annullata = true;
                return;
            }
        }
        writer->commit();
    });
    return scritta && !annullata;
}

} // namespace distinta
