#include "framework/hostglobalservices.h"

#include "framework/dictionarytranslationservice.h"
#include "framework/logservice.h"
#include "framework/reportengine.h"
#include "framework/themeservice.h"
#include "framework/workflowstateservice.h"

#include <QStringList>

namespace fw {

HostGlobalServices::HostGlobalServices()
    : m_translation(std::make_shared<DictionaryTranslationService>())
{ }

HostGlobalServices::~HostGlobalServices() = default;

QString HostGlobalServices::divisionVisibility(const QString &divisionColumn) const
{
    if (m_visibleDivisions.isEmpty())
        return {};
    QStringList ids;
    for (qint64 id : m_visibleDivisions)
        ids << QString::number(id);
    // Rows without a division belong to every division.
    return QStringLiteral(" AND (%1 IS NULL OR %1 IN (%2))").arg(divisionColumn, ids.join(QLatin1Char(',')));
}

std::shared_ptr<LogService> HostGlobalServices::createLogService() const
{
    return m_logFactory ? m_logFactory() : nullptr;
}

std::shared_ptr<ThemeService> HostGlobalServices::createThemeService() const
{
    return m_themeFactory ? m_themeFactory() : nullptr;
}

std::unique_ptr<ReportEngine> HostGlobalServices::createReportEngine() const
{
    return m_reportFactory ? m_reportFactory() : nullptr;
}

} // namespace fw
