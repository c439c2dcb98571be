// The module parameters of the company, as the editor keeps them for new nodes and for the
// groups of subject data it shows.
#include "forms/distinta/frmgd_distinta.h"

#include "data/parametristatements.h"
#include "data/sqltext.h"
#include "platform/db/recordset.h"

#include <stdexcept>

namespace {

// A date of the parameters row: stored as a date, or the statement's own default text.
QDate dateOf(const QVariant &value)
{
    if (value.metaType().id() == QMetaType::QDateTime || value.metaType().id() == QMetaType::QDate)
        return value.toDate();
    const QString text = value.toString().trimmed();
    QDate date = sqltext::parseDayMonthYear(text);
    if (!date.isValid())
        date = QDate::fromString(text.left(10), Qt::ISODate);
    if (!date.isValid())
        throw std::runtime_error(QStringLiteral("Data non valida nei parametri: %1").arg(text).toStdString());
    return date;
}

} // namespace

// A company without a parameters row gets the defaults of Parametri; a row with empty columns
// gets the statement's defaults instead, which differ on purpose: an empty end date there is
// 01/01/2099 and empty flags are off. The link state is read but never used: new nodes start at 0.
void FRMGD_DISTINTA::CaricaParametri()
{
    step(QStringLiteral("CaricaParametri"), [this] {
        m_rsParametri = connection()->openRecordset(parametristatements::snapshotQuery(companyCode()));
        Parametri read;
        if (!m_rsParametri->isEmpty()) {
            const db::Recordset &row = *m_rsParametri;
            m_rsParametri->moveFirst();
            read.tipoCaricaData = short(row.value(QStringLiteral("TipoCaricaDATA")).toInt());
            read.dataFissaInizio = dateOf(row.value(QStringLiteral("DataFissaINIZIO")));
            read.dataFissaFine = dateOf(row.value(QStringLiteral("DataFissaFINE")));
            read.flgAnagrafica = row.value(QStringLiteral("flg_Anagrafica")).toInt() != 0;
            read.flgCondVendita = row.value(QStringLiteral("flg_CondVendita")).toInt() != 0;
            read.flgClassificazioni = row.value(QStringLiteral("flg_Classificazioni")).toInt() != 0;
            read.flgProvvigioni = row.value(QStringLiteral("flg_Provvigioni")).toInt() != 0;
            read.tipoCaricaFatt = short(row.value(QStringLiteral("TipoCaricaFatt")).toInt());
        }
        m_parametri = read;
    });
}
