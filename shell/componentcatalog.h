#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

namespace fw {
class Cinterface;
}

// The components installed as plugins in one folder, found by the program identifiers their
// metadata declare ({"programIds": [...]}), and those the program carries itself.
class ComponentCatalog
{
public:
    using Factory = std::function<std::unique_ptr<fw::Cinterface>()>;

    explicit ComponentCatalog(const QString &folder);

    // A component of the program itself, found before the plugins under its identifier.
    void registerBuiltIn(const QString &programId, Factory factory);

    QString folder() const { return m_folder; }
    QStringList programIds() const;

    // A new instance of the component; null when no plugin of the folder provides it.
    std::unique_ptr<fw::Cinterface> create(const QString &programId) const;

private:
    QString m_folder;
    QList<std::pair<QString, Factory>> m_builtIn;
};
