#pragma once

#include <QString>
#include <QStringList>
#include <memory>

namespace fw {
class Cinterface;
}

// The components installed as plugins in one folder, found by the program identifiers their
// metadata declare ({"programIds": [...]}).
class ComponentCatalog
{
public:
    explicit ComponentCatalog(const QString &folder);

    QString folder() const { return m_folder; }
    QStringList programIds() const;

    // A new instance of the component; null when no plugin of the folder provides it.
    std::unique_ptr<fw::Cinterface> create(const QString &programId) const;

private:
    QString m_folder;
};
