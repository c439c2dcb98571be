// The master-data sheet of the focused subject: one line per column of the subject's statement,
// its name and its value. The groups of lines follow the parameters' display switches; with a
// division chosen, the division's own payment terms, agent and classifications replace the
// subject's general ones.
#include "forms/distinta/frmgd_distinta.h"

#include "data/dettaglistatements.h"
#include "framework/globalservices.h"
#include "framework/treelist/treelistcolumn.h"
#include "platform/os/windowupdatelock.h"

#include <QHeaderView>
#include <QLocale>
#include <QTableWidget>

namespace {

constexpr int larghezzaNome = 2000;     // twips
constexpr int larghezzaValore = 9000;

} // namespace

QString FRMGD_DISTINTA::CaricaDatiAnagrafici(const db::FieldInfo &field, const QVariant &value)
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
    case db::FieldType::DateTime:
        return value.toDate().toString(QStringLiteral("dd/MM/yyyy"));
    case db::FieldType::Text:
        return value.toString();
    default:
        return {};
    }
}

// Forgets the subject shown, so that the next load reads it again.
void FRMGD_DISTINTA::SvuotaFlex(QTableWidget *grid)
{
    step(QStringLiteral("SvuotaFlex"), [&] {
        grid->clearContents();
        grid->setRowCount(0);
        if (grid == GRD_DATIANAGRAFICI)
            m_ultimoSoggetto.reset();
    });
}

void FRMGD_DISTINTA::CaricaCondizioniCliente(double codice)
{
    const qint64 soggetto = qint64(codice);
    if (m_ultimoSoggetto == soggetto)
        return;

    db::RecordsetPtr dati;
    if (!step(QStringLiteral("CaricaCondizioniCliente"), [&] {
            const fw::GlobalServices *services = globals();
            const QString divisione = m_divisione ? QString::number(*m_divisione) : QString();
            const QString visibilita = services && !divisione.isEmpty()
                ? services->divisionVisibility(QStringLiteral("CO1C_IDDIV_CO1A")) : QString();
            const dettaglistatements::GruppiAnagrafica gruppi{.condVendita = m_parametri.flgCondVendita,
                                                               .provvigioni = m_parametri.flgProvvigioni,
                                                               .classificazioni = m_parametri.flgClassificazioni};
            dati = connection()->openRecordset(dettaglistatements::masterDataQuery(
                companyCode(), m_tipoSoggetto, soggetto, gruppi, divisione, visibilita));
        }))
        return;

    // The lines are made before the sheet changes: a failure leaves the sheet as it was.
    QList<std::pair<QString, QString>> righe;
    if (!dati->isEmpty()) {
        if (!step(QStringLiteral("CaricaDatiAnagrafici"), [&] {
                dati->moveFirst();
                for (int i = 0; i < dati->fieldCount(); ++i)
                    righe.append({dati->field(i).name, CaricaDatiAnagrafici(dati->field(i), dati->value(i))});
            }))
            return;
    }

    m_ultimoSoggetto = soggetto;
    os::WindowUpdateLock freeze(GRD_DATIANAGRAFICI);
    GRD_DATIANAGRAFICI->clearContents();
    GRD_DATIANAGRAFICI->setColumnCount(2);
    GRD_DATIANAGRAFICI->horizontalHeader()->hide();
    const int dpi = GRD_DATIANAGRAFICI->logicalDpiX();
    GRD_DATIANAGRAFICI->setColumnWidth(0, fw::twipsToPixels(larghezzaNome, dpi));
    GRD_DATIANAGRAFICI->setColumnWidth(1, fw::twipsToPixels(larghezzaValore, dpi));
    GRD_DATIANAGRAFICI->setRowCount(int(righe.size()));
    for (int row = 0; row < righe.size(); ++row) {
        for (int column = 0; column < 2; ++column) {
            auto *item = new QTableWidgetItem(column == 0 ? righe.at(row).first : righe.at(row).second);
            item->setTextAlignment(Qt::AlignLeft | Qt::AlignVCenter);
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
            GRD_DATIANAGRAFICI->setItem(row, column, item);
        }
    }
}
