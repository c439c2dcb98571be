#include "framework/layoutmemory.h"

#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <QUrl>

namespace fw {

namespace {

QString encoded(const QString &name)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(name));
}

// A file that cannot be read as settings is left alone and gives nothing back.
bool readable(const QSettings &settings)
{
    return settings.status() == QSettings::NoError;
}

} // namespace

LayoutMemory::LayoutMemory(const QString &settingsFile, const QString &user, const QString &window)
    : m_settingsFile(settingsFile)
    , m_group(QStringLiteral("utente_") + encoded(user) + QStringLiteral("/") + encoded(window))
{
}

QHash<QString, int> LayoutMemory::columnWidths(const QString &grid, const QStringList &columns) const
{
    if (m_settingsFile.isEmpty() || !QFileInfo::exists(m_settingsFile))
        return {};
    QSettings settings(m_settingsFile, QSettings::IniFormat);
    if (!readable(settings))
        return {};
    settings.beginGroup(m_group);
    const QStringList names = settings.value(encoded(grid) + QStringLiteral("/colonne")).toStringList();
    const QStringList widths = settings.value(encoded(grid) + QStringLiteral("/larghezze")).toStringList();
    if (names != columns || widths.size() != names.size())
        return {};
    QHash<QString, int> result;
    for (int i = 0; i < names.size(); ++i) {
        bool ok = false;
        const int width = widths.at(i).toInt(&ok);
        if (!ok || width <= 0 || width > 1000000)
            return {};
        result.insert(names.at(i), width);
    }
    return result;
}

void LayoutMemory::rememberColumnWidths(const QString &grid, const QList<std::pair<QString, int>> &widths)
{
    if (m_settingsFile.isEmpty())
        return;
    QStringList names;
    QStringList values;
    for (const auto &[name, width] : widths) {
        names << name;
        values << QString::number(width);
    }
    QSettings settings(m_settingsFile, QSettings::IniFormat);
    if (!readable(settings))
        return;
    settings.beginGroup(m_group);
    settings.setValue(encoded(grid) + QStringLiteral("/colonne"), names);
    settings.setValue(encoded(grid) + QStringLiteral("/larghezze"), values);
    settings.endGroup();
    settings.sync();
}

QList<double> LayoutMemory::splitterShares() const
{
    if (m_settingsFile.isEmpty() || !QFileInfo::exists(m_settingsFile))
        return {};
    QSettings settings(m_settingsFile, QSettings::IniFormat);
    if (!readable(settings))
        return {};
    settings.beginGroup(m_group);
    QList<double> shares;
    for (const QString &text : settings.value(QStringLiteral("divisori")).toStringList()) {
        bool ok = false;
        const double share = text.toDouble(&ok);
        if (!ok || share <= 0 || share >= 1)
            return {};
        shares << share;
    }
    return shares;
}

void LayoutMemory::rememberSplitterShares(const QList<double> &shares)
{
    if (m_settingsFile.isEmpty())
        return;
    QStringList texts;
    for (double share : shares)
        texts << QString::number(share, 'f', 4);
    QSettings settings(m_settingsFile, QSettings::IniFormat);
    if (!readable(settings))
        return;
    settings.beginGroup(m_group);
    settings.setValue(QStringLiteral("divisori"), texts);
    settings.endGroup();
    settings.sync();
}

QSize LayoutMemory::windowSize() const
{
    if (m_settingsFile.isEmpty() || !QFileInfo::exists(m_settingsFile))
        return {};
    QSettings settings(m_settingsFile, QSettings::IniFormat);
    if (!readable(settings))
        return {};
    settings.beginGroup(m_group);
    const QStringList parts = settings.value(QStringLiteral("dimensioni")).toStringList();
    if (parts.size() != 2)
        return {};
    const QSize size(parts.at(0).toInt(), parts.at(1).toInt());
    return size.width() >= 200 && size.height() >= 150 && size.width() <= 20000 && size.height() <= 20000
        ? size
        : QSize();
}

void LayoutMemory::rememberWindowSize(const QSize &size)
{
    if (m_settingsFile.isEmpty() || !size.isValid())
        return;
    QSettings settings(m_settingsFile, QSettings::IniFormat);
    if (!readable(settings))
        return;
    settings.beginGroup(m_group);
    settings.setValue(QStringLiteral("dimensioni"),
                      QStringList{QString::number(size.width()), QString::number(size.height())});
    settings.endGroup();
    settings.sync();
}

QString LayoutMemory::defaultSettingsFile()
{
    if (qEnvironmentVariableIsSet("DISTINTA_LAYOUT_FILE"))
        return qEnvironmentVariable("DISTINTA_LAYOUT_FILE");
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + QStringLiteral("/finestre.ini");
}

} // namespace fw
