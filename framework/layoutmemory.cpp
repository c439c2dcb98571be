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
{ }

QVariantList LayoutMemory::stored(const QStringList &keys) const
{
    if (m_settingsFile.isEmpty() || !QFileInfo::exists(m_settingsFile))
        return {};
    QSettings settings(m_settingsFile, QSettings::IniFormat);
    if (!readable(settings))
        return {};
    settings.beginGroup(m_group);
    QVariantList values;
    for (const QString &key : keys)
        values << settings.value(key);
    return values;
}

void LayoutMemory::store(const QList<std::pair<QString, QVariant>> &values)
{
    if (m_settingsFile.isEmpty())
        return;
    QSettings settings(m_settingsFile, QSettings::IniFormat);
    if (!readable(settings))
        return;
    settings.beginGroup(m_group);
    for (const auto &[key, value] : values)
        settings.setValue(key, value);
    settings.endGroup();
    settings.sync();
}

QHash<QString, int> LayoutMemory::columnWidths(const QString &grid, const QStringList &columns) const
{
    const QVariantList values = stored(
        {encoded(grid) + QStringLiteral("/colonne"), encoded(grid) + QStringLiteral("/larghezze")});
    if (values.isEmpty())
        return {};
    const QStringList names = values.at(0).toStringList();
    const QStringList widths = values.at(1).toStringList();
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
    QStringList names;
    QStringList values;
    for (const auto &[name, width] : widths) {
        names << name;
        values << QString::number(width);
    }
    store(
        {{encoded(grid) + QStringLiteral("/colonne"), names}, {encoded(grid) + QStringLiteral("/larghezze"), values}});
}

QList<double> LayoutMemory::splitterShares() const
{
    const QVariantList values = stored({QStringLiteral("divisori")});
    if (values.isEmpty())
        return {};
    QList<double> shares;
    for (const QString &text : values.at(0).toStringList()) {
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
    QStringList texts;
    for (double share : shares)
        texts << QString::number(share, 'f', 4);
    store({{QStringLiteral("divisori"), texts}});
}

QSize LayoutMemory::windowSize() const
{
    const QVariantList values = stored({QStringLiteral("dimensioni")});
    if (values.isEmpty())
        return {};
    const QStringList parts = values.at(0).toStringList();
    if (parts.size() != 2)
        return {};
    const QSize size(parts.at(0).toInt(), parts.at(1).toInt());
    return size.width() >= 200 && size.height() >= 150 && size.width() <= 20000 && size.height() <= 20000 ? size
                                                                                                          : QSize();
}

void LayoutMemory::rememberWindowSize(const QSize &size)
{
    if (!size.isValid())
        return;
    store(
        {{QStringLiteral("dimensioni"), QStringList {QString::number(size.width()), QString::number(size.height())}}});
}

QString LayoutMemory::defaultSettingsFile()
{
    if (qEnvironmentVariableIsSet("DISTINTA_LAYOUT_FILE"))
        return qEnvironmentVariable("DISTINTA_LAYOUT_FILE");
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + QStringLiteral("/finestre.ini");
}

} // namespace fw
