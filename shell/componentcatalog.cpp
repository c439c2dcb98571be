#include "shell/componentcatalog.h"

#include "framework/cinterface.h"
#include "framework/modulefactory.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QPluginLoader>

namespace {

QStringList declaredProgramIds(const QPluginLoader &loader)
{
    QStringList ids;
    const QJsonArray declared =
        loader.metaData().value(QStringLiteral("MetaData")).toObject().value(QStringLiteral("programIds")).toArray();
    for (const QJsonValue &id : declared)
        ids << id.toString();
    return ids;
}

QStringList pluginFiles(const QString &folder)
{
    QStringList files;
    const QDir dir(folder);
    for (const QString &name : dir.entryList(QDir::Files, QDir::Name)) {
        if (QLibrary::isLibrary(name))
            files << dir.filePath(name);
    }
    return files;
}

} // namespace

ComponentCatalog::ComponentCatalog(const QString &folder)
    : m_folder(folder)
{ }

void ComponentCatalog::registerBuiltIn(const QString &programId, Factory factory)
{
    m_builtIn.append({programId, std::move(factory)});
}

QStringList ComponentCatalog::programIds() const
{
    QStringList ids;
    for (const auto &[id, factory] : m_builtIn)
        ids << id;
    for (const QString &file : pluginFiles(m_folder))
        ids << declaredProgramIds(QPluginLoader(file));
    return ids;
}

std::unique_ptr<fw::Cinterface> ComponentCatalog::create(const QString &programId) const
{
    for (const auto &[id, factory] : m_builtIn) {
        if (id.compare(programId, Qt::CaseInsensitive) == 0)
            return factory();
    }
    for (const QString &file : pluginFiles(m_folder)) {
        QPluginLoader loader(file);
        if (!declaredProgramIds(loader).contains(programId, Qt::CaseInsensitive))
            continue;
        // The plugin stays loaded for the rest of the run: its objects live in the shell's windows.
        if (auto *factory = qobject_cast<fw::ModuleFactory *>(loader.instance()))
            return std::unique_ptr<fw::Cinterface>(factory->create(programId));
    }
    return nullptr;
}
