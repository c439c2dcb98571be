#include "framework/report/reportdialogmemory.h"

#include <QSettings>
#include <QStandardPaths>
#include <QUrl>

namespace fw {

namespace {

// One group per user; the name is percent-encoded so that any character is a valid key.
QString groupOf(const QString &user)
{
    return QStringLiteral("utente_") + QString::fromLatin1(QUrl::toPercentEncoding(user));
}

QString modeName(ReportEngine::RunMode mode)
{
    switch (mode) {
    case ReportEngine::RunMode::Print: return QStringLiteral("stampante");
    case ReportEngine::RunMode::Pdf: return QStringLiteral("pdf");
    case ReportEngine::RunMode::Preview: break;
    }
    return QStringLiteral("anteprima");
}

ReportEngine::RunMode modeOf(const QString &name)
{
    if (name == QLatin1String("stampante"))
        return ReportEngine::RunMode::Print;
    if (name == QLatin1String("pdf"))
        return ReportEngine::RunMode::Pdf;
    return ReportEngine::RunMode::Preview;
}

} // namespace

ReportDialogMemory::ReportDialogMemory(const QString &settingsFile)
    : m_settingsFile(settingsFile)
{ }

ReportPrintChoice ReportDialogMemory::recall(const QString &user) const
{
    QSettings settings(m_settingsFile, QSettings::IniFormat);
    settings.beginGroup(groupOf(user));
    ReportPrintChoice choice;
    choice.printedBy = settings.value(QStringLiteral("eseguitoDa")).toString();
    choice.printedFor = settings.value(QStringLiteral("destinatoA")).toString();
    choice.notes = settings.value(QStringLiteral("note")).toString();
    choice.mode = modeOf(settings.value(QStringLiteral("destinazione")).toString());
    choice.pdfPath = settings.value(QStringLiteral("filePdf")).toString();
    return choice;
}

void ReportDialogMemory::remember(const QString &user, const ReportPrintChoice &choice)
{
    QSettings settings(m_settingsFile, QSettings::IniFormat);
    settings.beginGroup(groupOf(user));
    settings.setValue(QStringLiteral("eseguitoDa"), choice.printedBy);
    settings.setValue(QStringLiteral("destinatoA"), choice.printedFor);
    settings.setValue(QStringLiteral("note"), choice.notes);
    settings.setValue(QStringLiteral("destinazione"), modeName(choice.mode));
    settings.setValue(QStringLiteral("filePdf"), choice.pdfPath);
    settings.endGroup();
    settings.sync();
}

QString ReportDialogMemory::defaultSettingsFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + QStringLiteral("/stampe.ini");
}

} // namespace fw
