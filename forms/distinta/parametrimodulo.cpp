// The module parameters of the company, as the editor keeps them for new nodes and for the
// groups of subject data it shows, and the parameters form that changes them.
#include "forms/distinta/parametrimodulo.h"

#include "data/parametristatements.h"
#include "data/sqltext.h"
#include "forms/distinta/frmgd_distinta.h"
#include "forms/parametri/frmgd_parametri.h"
#include "framework/cinterface.h"
#include "platform/db/recordset.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <stdexcept>

namespace distinta {

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

ParametriModulo::ParametriModulo(FRMGD_DISTINTA &editor)
    : m_editor(editor)
    , CMD_PARAMETRI(new QPushButton(QStringLiteral("&Parametri")))
{
    CMD_PARAMETRI->setObjectName(QStringLiteral("CMD_PARAMETRI"));
    CMD_PARAMETRI->setToolTip(QStringLiteral("Parametri del modulo per la ditta (Alt+P)"));
    connect(CMD_PARAMETRI, &QPushButton::clicked, this, &ParametriModulo::CMD_PARAMETRI_Click);
}

// A company without a parameters row gets the defaults of Parametri; a row with empty columns
// gets the statement's defaults instead, which differ on purpose: an empty end date there is
// 01/01/2099 and empty flags are off. The link state is read but never used: new nodes start at 0.
void ParametriModulo::CaricaParametri()
{
    m_editor.step(QStringLiteral("CaricaParametri"), [this] {
        const db::RecordsetPtr rows = m_editor.connection()->openRecordset(
            parametristatements::snapshotQuery(m_editor.companyCode()));
        Parametri read;
        if (!rows->isEmpty()) {
            const db::Recordset &row = *rows;
            rows->moveFirst();
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

void ParametriModulo::CMD_PARAMETRI_Click()
{
    if (m_parametriForm) {
        if (auto *window = qobject_cast<QMdiSubWindow *>(m_parametriForm->parentWidget()))
            window->mdiArea()->setActiveSubWindow(window);
        else
            m_parametriForm->activateWindow();
        return;
    }
    auto *form = new FRMGD_PARAMETRI(&m_editor);
    connect(form, &FormFrame::unloaded, this, &ParametriModulo::formChiuso);
    m_parametriForm = form;
    form->showModeless(m_editor.entryClass() ? m_editor.entryClass()->ActiveFrame() : nullptr);
}

FRMGD_PARAMETRI *ParametriModulo::formParametri() const
{
    return m_parametriForm;
}

void ParametriModulo::nodoCambiato()
{
    if (m_parametriForm)
        m_parametriForm->mostraEreditaPromo();
}

// New parameters change the groups of the master-data sheet and the defaults of new nodes; with
// no node shown there is nothing to show them on, and they are read at the next focus change.
void ParametriModulo::formChiuso()
{
    m_parametriForm.clear();
    const db::RecordsetPtr nodi = m_editor.nodi();
    if (!m_editor.isLoaded() || m_editor.isFirstActivation() || !nodi || nodi->isEmpty())
        return;
    CaricaParametri();
    emit parametriChiusi();
}

} // namespace distinta
