// The subject selection list: every customer or supplier of the company, built in a temporary
// table of the form's connection, with a tick to choose subjects and a flag for those already
// placed in a classification of the same kind.
#include "forms/distinta/frmgd_distinta.h"

#include "data/anagrafichestatements.h"
#include "data/sqltext.h"
#include "framework/logservice.h"
#include "framework/recordsetgrid.h"
#include "platform/os/windowupdatelock.h"

#include <QTreeWidget>

void FRMGD_DISTINTA::CaricaAnagraficheDistinta()
{
    const QString procedure = QStringLiteral("CaricaAnagraficheDistinta");
    const QTreeWidgetItem *selected = TVW_SELDISTINTE->currentItem();
    if (!selected || !selected->parent()) {
        if (fw::LogService *log = logService())
            log->showMessage(QStringLiteral("Occorre selezionare la distinta da modificare."),
                             QStringLiteral("Attenzione"), fw::MessageStyle::Warning);
        return;
    }
    // "P0" customers, "P1" suppliers.
    const int subjectKind = selected->parent()->data(0, Qt::UserRole).toString().mid(1, 1).toInt();

    EliminaTabellaTemp(anagrafichestatements::subjectListTable(), connection());
    if (!step(procedure, [&] {
            connection()->execute(anagrafichestatements::buildSubjectListStatement(companyCode(), subjectKind, m_divisione));
        }))
        return;
    db::RecordsetPtr list;
    if (!step(procedure, [&] { list = connection()->openRecordset(anagrafichestatements::readSubjectListStatement()); }))
        return;
    InizializzaQgrid();
    m_anagrafiche = list;
    GRD_ANAGRAFICHEDISTINTA->setRecordset(list);
    connect(list.get(), &QAbstractItemModel::dataChanged, this, &FRMGD_DISTINTA::contaSelezionatiPiuTardi);
    connect(list.get(), &QAbstractItemModel::modelReset, this, &FRMGD_DISTINTA::contaSelezionatiPiuTardi);
    contaSelezionatiPiuTardi();
    SplitterReposition();
}

// Showing the "Anagrafiche" page rebuilds the list, so that it reflects the trees as they are now.
void FRMGD_DISTINTA::TAB_VISUALIZZAGESTIONE_Click(int index)
{
    if (index == 1 && connection())
        CaricaAnagraficheDistinta();
}

// Dropping a table that is not there is no failure worth a word.
void FRMGD_DISTINTA::EliminaTabellaTemp(const QString &table, const db::ConnectionPtr &connection)
{
    if (!connection)
        return;
    if (!quietly([&] { connection->execute(sqltext::dropTempTableStatement(table)); }))
        connection->clearErrors();
}

// Headings, widths and read-only columns of the subject list and of the search results; once.
void FRMGD_DISTINTA::InizializzaQgrid()
{
    if (m_qgridConfigurata)
        return;
    step(QStringLiteral("InizializzaQgrid"), [this] {
        using Kind = fw::RecordsetGridColumn::Kind;
        QList<fw::RecordsetGridColumn> subjects = {
            {.key = QStringLiteral("Seleziona"), .caption = QStringLiteral("Sel."), .width = 750,
             .kind = Kind::Check, .readOnly = false, .background = QColor(255, 255, 153)},
            {.key = QStringLiteral("AssociatoInDistinta"), .caption = QStringLiteral("Pres."), .width = 750, .kind = Kind::Mark},
            {.key = QStringLiteral("Codice"), .width = 900},
            {.key = QStringLiteral("Ragione sociale"), .width = 4500},
            {.key = QStringLiteral("CodPagamento"), .width = 600},
            {.key = QStringLiteral("DescPagamento"), .width = 3000},
            {.key = QStringLiteral("CodAgente"), .width = 600},
            {.key = QStringLiteral("Ragione sociale agente"), .width = 3000},
            {.key = QStringLiteral("Citta"), .width = 3000},
            {.key = QStringLiteral("Provincia"), .width = 1000},
        };
        for (const char *classification : {"Macroarea", "Area", "Zona", "MacroCategoria", "Categoria",
                                           "SottoCategoria", "RaggrCF1", "RaggrCF2", "RaggrCF3"})
            subjects.append({.key = QString::fromLatin1(classification), .width = 3000});
        GRD_ANAGRAFICHEDISTINTA->setColumns(subjects);

        GRD_CERCADISTINTA->setColumns({
            {.key = QStringLiteral("VAI"), .caption = QStringLiteral("Vai"), .width = 600, .kind = Kind::Button},
            {.key = QStringLiteral("ANAGRAFICA"), .caption = QStringLiteral("Anagrafica"), .width = 2000},
            {.key = QStringLiteral("DISTINTA"), .caption = QStringLiteral("Distinta"), .width = 2000},
        });
        m_qgridConfigurata = true;
    });
}

// A click on the "Sel." heading ticks every subject, the next one clears every tick.
void FRMGD_DISTINTA::GRD_ANAGRAFICHEDISTINTA_HeaderClick(const QString &key)
{
    if (key != QLatin1String("Seleziona") || !m_anagrafiche)
        return;
    step(QStringLiteral("GRD_ANAGRAFICHEDISTINTA_SelezionaTutti"), [this] {
        os::WindowUpdateLock freeze(GRD_ANAGRAFICHEDISTINTA);
        const int value = m_selezionaTutti ? 0 : 1;
        // A clone walks the shared rows without dragging the grid's current row along.
        const db::RecordsetPtr rows = m_anagrafiche->clone();
        for (rows->moveFirst(); !rows->eof(); rows->moveNext())
            rows->setValue(QStringLiteral("Seleziona"), value);
        m_selezionaTutti = !m_selezionaTutti;
        if (!m_anagrafiche->isEmpty())
            m_anagrafiche->moveFirst();
    });
}
