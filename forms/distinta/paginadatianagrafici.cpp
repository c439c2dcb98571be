#include "forms/distinta/paginadatianagrafici.h"

#include "data/dettaglistatements.h"
#include "data/sqltext.h"
#include "forms/distinta/albero.h"
#include "forms/distinta/parametrimodulo.h"
#include "frame/formframe.h"
#include "framework/emptyviewhint.h"
#include "framework/globalservices.h"
#include "framework/columnfit.h"
#include "framework/columnsizing.h"
#include "framework/windowupdatelock.h"

#include <QHeaderView>
#include <QLocale>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace distinta {

namespace {

constexpr int larghezzaNome = 2000; // twips
constexpr int larghezzaValore = 9000;

// Names and values whole: the widest of the lines shown. The names, and many values, come back
// node after node: their widths are kept.
int testoPiuLargo(const QTableWidget *griglia, int colonna, fw::WidthMemo &larghezze)
{
    int largo = 0;
    for (int row = 0; row < griglia->rowCount(); ++row) {
        if (const QTableWidgetItem *item = griglia->item(row, colonna)) {
            const QString testo = item->text();
            largo = std::max(largo, larghezze.width(griglia->font(), testo, [&] {
                return griglia->fontMetrics().horizontalAdvance(testo);
            }));
        }
    }
    return largo;
}

} // namespace

PaginaDatiAnagrafici::PaginaDatiAnagrafici(FormFrame &form, Albero &albero, const ParametriModulo &parametri)
    : m_form(form)
    , m_albero(albero)
    , m_parametri(parametri)
    , m_pagina(new QWidget)
    , GRD_DATIANAGRAFICI(new QTableWidget)
{
    GRD_DATIANAGRAFICI->setObjectName(QStringLiteral("GRD_DATIANAGRAFICI"));
    GRD_DATIANAGRAFICI->setEditTriggers(QAbstractItemView::NoEditTriggers);
    GRD_DATIANAGRAFICI->verticalHeader()->setVisible(false);
    GRD_DATIANAGRAFICI->horizontalHeader()->hide();
    m_larghezze = new fw::ColumnFit(
        GRD_DATIANAGRAFICI, GRD_DATIANAGRAFICI->horizontalHeader(),
        {.designTwips = [](int colonna) { return colonna == 0 ? larghezzaNome : larghezzaValore; },
         .minimumWidth =
             [griglia = GRD_DATIANAGRAFICI, larghezze = std::make_shared<fw::WidthMemo>()](int colonna) {
                 return fw::minimumColumnWidth(QString(), griglia->fontMetrics(),
                                               testoPiuLargo(griglia, colonna, *larghezze));
             },
         .setDesignTwips = [](int, int) {}}); // no heading to drag
    m_larghezze->setFillWidth(true);
    auto *layout = new QVBoxLayout(m_pagina);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(GRD_DATIANAGRAFICI);
    m_vuoto = std::make_unique<fw::EmptyViewHint>(GRD_DATIANAGRAFICI, [] {
        return QStringLiteral("I dati anagrafici compaiono spostandosi su un nodo dell'albero.");
    });
}

PaginaDatiAnagrafici::~PaginaDatiAnagrafici() = default;

QString PaginaDatiAnagrafici::CaricaDatiAnagrafici(const db::FieldInfo &field, const QVariant &value)
{
    if (value.isNull())
        return {};
    switch (field.type) {
    case db::FieldType::Integer:
    case db::FieldType::Double:
    case db::FieldType::Decimal: {
        bool ok = false;
        const double number = value.toDouble(&ok);
        if (!ok)
            return {};
        return QLocale(QLocale::Italian, QLocale::Italy).toString(number, 'f', field.numericScale > 0 ? 2 : 0);
    }
    case db::FieldType::DateTime: return sqltext::dayMonthYear(value.toDate());
    case db::FieldType::Text: return value.toString();
    default: return {};
    }
}

void PaginaDatiAnagrafici::SvuotaFlex()
{
    m_form.step(QStringLiteral("SvuotaFlex"), [&] {
        GRD_DATIANAGRAFICI->clearContents();
        GRD_DATIANAGRAFICI->setRowCount(0);
        m_ultimoSoggetto.reset();
    });
}

void PaginaDatiAnagrafici::CaricaCondizioniCliente(double codice)
{
    const qint64 soggetto = qint64(codice);
    if (m_ultimoSoggetto == soggetto)
        return;

    db::RecordsetPtr dati;
    if (!m_form.step(
            QStringLiteral("CaricaCondizioniCliente"),
            [&] {
                const fw::GlobalServices *services = m_form.globals();
                const QString divisione = m_albero.divisione() ? QString::number(*m_albero.divisione()) : QString();
                const QString visibilita = services && !divisione.isEmpty()
                    ? services->divisionVisibility(QStringLiteral("CO1C_IDDIV_CO1A"))
                    : QString();
                const Parametri &parametri = m_parametri.valori();
                const dettaglistatements::GruppiAnagrafica gruppi {.condVendita = parametri.flgCondVendita,
                                                                   .provvigioni = parametri.flgProvvigioni,
                                                                   .classificazioni = parametri.flgClassificazioni};
                dati = m_form.connection()->openRecordset(dettaglistatements::masterDataQuery(
                    m_form.companyCode(), m_albero.tipoSoggetto(), soggetto, gruppi, divisione, visibilita));
            })
        || !dati) // ignored: the sheet stays as it was
        return;

    // The lines are made before the sheet changes: a failure leaves the sheet as it was.
    QList<std::pair<QString, QString>> righe;
    if (!dati->isEmpty()) {
        if (!m_form.step(QStringLiteral("CaricaDatiAnagrafici"), [&] {
                dati->moveFirst();
                for (int i = 0; i < dati->fieldCount(); ++i)
                    righe.append({dati->field(i).name, CaricaDatiAnagrafici(dati->field(i), dati->value(i))});
            }))
            return;
    }

    m_ultimoSoggetto = soggetto;
    fw::WindowUpdateLock freeze(GRD_DATIANAGRAFICI);
    GRD_DATIANAGRAFICI->clearContents();
    GRD_DATIANAGRAFICI->setColumnCount(2);
    GRD_DATIANAGRAFICI->setRowCount(int(righe.size()));
    for (int row = 0; row < righe.size(); ++row) {
        for (int column = 0; column < 2; ++column) {
            auto *item = new QTableWidgetItem(column == 0 ? righe.at(row).first : righe.at(row).second);
            item->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
            GRD_DATIANAGRAFICI->setItem(row, column, item);
        }
    }
    m_larghezze->apply();
}

} // namespace distinta
