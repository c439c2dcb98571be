#include "shell/shelloptions.h"

#include "platform/os/systeminfo.h"
#include "shell/listoptions.h"
#include "shell/odbcpassword.h"

#include <QCommandLineParser>
#include <QRegularExpression>
#include <QTextStream>

// "1920x1080" (or with X or ×); anything else, or a size out of range, is invalid.
QSize ShellOptions::parseWindowSize(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("^\\s*(\\d{1,5})\\s*[xX\u00d7]\\s*(\\d{1,5})\\s*$"));
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        return {};
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    if (size.width() < 320 || size.height() < 200 || size.width() > 10000 || size.height() > 10000)
        return {};
    return size;
}

ShellOptions ShellOptions::parse(const QStringList &arguments, int *exitCode)
{
    ShellOptions options;
    options.user = os::userName();
    *exitCode = -1;

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Distinte di classificazione di clienti e fornitori.\n"
        "Senza --database né --odbc usa il database dimostrativo, creato al primo avvio con l'utente "
        "nella cartella dei dati dell'utente.\n"
        "Senza utente (--exit-after-show, --screenshot, --print, --export, --history, --compare, --check, --import) "
        "un errore non apre finestre: viene scritto una volta sullo standard error e il programma termina; un "
        "database che non esiste è un errore.\n"
        "Codici di uscita: 0 riuscito; 1 argomenti errati, database non aperto o rifiutato, editor non aperto; "
        "2 nessuno schermo disponibile; 3 errore durante un'esecuzione senza utente; 4 con --import, righe "
        "rifiutate."));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Mostra questo aiuto ed esce."));
    const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")},
                                     QStringLiteral("Mostra la versione ed esce."));
    const QCommandLineOption company({QStringLiteral("d"), QStringLiteral("company")},
                                     QStringLiteral("Codice della ditta di lavoro (predefinito: 1)."),
                                     QStringLiteral("ditta"), QStringLiteral("1"));
    const QCommandLineOption user({QStringLiteral("u"), QStringLiteral("user")},
                                  QStringLiteral("Utente (predefinito: l'utente del sistema, %1).").arg(options.user),
                                  QStringLiteral("utente"), options.user);
    const QCommandLineOption group({QStringLiteral("g"), QStringLiteral("group")},
                                   QStringLiteral("Gruppo dell'utente (predefinito: ADMIN)."), QStringLiteral("gruppo"),
                                   options.userGroup);
    const QCommandLineOption database(
        QStringLiteral("database"),
        QStringLiteral("File SQLite da usare; se non esiste, un avvio con l'utente lo crea con i dati "
                       "dimostrativi."),
        QStringLiteral("file"));
    const QCommandLineOption odbc(QStringLiteral("odbc"),
                                  QStringLiteral("Stringa di connessione ODBC al database Microsoft SQL Server "
                                                 "della suite, al posto del database SQLite. La password non va "
                                                 "scritta qui (gli altri utenti del computer la vedrebbero): si passa "
                                                 "con la variabile d'ambiente %1 oppure con --odbc-password-file.")
                                      .arg(QString::fromLatin1(kOdbcPasswordVariable)),
                                  QStringLiteral("stringa"));
    const QCommandLineOption odbcPasswordFile(
        QStringLiteral("odbc-password-file"),
        QStringLiteral("File con la password della connessione ODBC (la prima "
                       "riga); deve essere leggibile solo dall'utente (chmod 600)."),
        QStringLiteral("file"));
    const QCommandLineOption exitAfterShow(
        QStringLiteral("exit-after-show"),
        QStringLiteral("Apre l'editor, elenca le finestre aperte ed esce (verifica automatica)."));
    const QCommandLineOption screenshot(
        QStringLiteral("screenshot"),
        QStringLiteral("Apre l'editor, salva l'immagine della finestra nel file PNG indicato ed esce."),
        QStringLiteral("file.png"));
    const QCommandLineOption size(QStringLiteral("size"),
                                  QStringLiteral("Dimensioni della finestra in pixel, per esempio 1920x1080 "
                                                 "(con --screenshot e --exit-after-show, predefinite 1280x800)."),
                                  QStringLiteral("LARGHEZZAxALTEZZA"));
    parser.addOptions(
        {help, version, company, user, group, database, odbc, odbcPasswordFile, exitAfterShow, screenshot, size});
    parser.addOptions(PrintRequest::options());
    parser.addOptions(ExportRequest::options());
    parser.addOptions(HistoryRequest::options());
    parser.addOptions(ImportRequest::options());
    parser.addOptions(listoptions::options());

    QTextStream out(stdout);
    QTextStream err(stderr);
    if (!parser.parse(arguments)) {
        err << parser.errorText() << Qt::endl << QStringLiteral("Usare --help per l'elenco delle opzioni.") << Qt::endl;
        *exitCode = 1;
        return options;
    }
    if (parser.isSet(help)) {
        out << parser.helpText(); // its headings come from Qt's Italian catalogue
        *exitCode = 0;
        return options;
    }
    if (parser.isSet(version)) {
        out << QStringLiteral("distinta 0.1") << Qt::endl;
        *exitCode = 0;
        return options;
    }
    if (!parser.positionalArguments().isEmpty()) {
        err << QStringLiteral("Argomento non previsto: %1").arg(parser.positionalArguments().first()) << Qt::endl;
        *exitCode = 1;
        return options;
    }
    if (parser.isSet(odbcPasswordFile) && !parser.isSet(odbc)) {
        err << QStringLiteral("--odbc-password-file vale solo insieme a --odbc.") << Qt::endl;
        *exitCode = 1;
        return options;
    }
    if (parser.isSet(database) && parser.isSet(odbc)) {
        err << QStringLiteral("Indicare --database oppure --odbc, non entrambi.") << Qt::endl;
        *exitCode = 1;
        return options;
    }

    bool numeric = false;
    options.company = parser.value(company).toInt(&numeric);
    if (!numeric || options.company <= 0) {
        err << QStringLiteral("Codice ditta non valido: %1").arg(parser.value(company)) << Qt::endl;
        *exitCode = 1;
        return options;
    }
    options.user = parser.value(user);
    options.userGroup = parser.value(group);
    options.databasePath = parser.value(database);
    options.odbcConnectionString = parser.value(odbc);
    options.odbcPasswordFile = parser.value(odbcPasswordFile);
    options.exitAfterShow = parser.isSet(exitAfterShow);
    options.screenshotPath = parser.value(screenshot);
    if (parser.isSet(size)) {
        options.windowSize = parseWindowSize(parser.value(size));
        if (!options.windowSize.isValid()) {
            err << QStringLiteral("Dimensioni non valide: %1 (scrivere LARGHEZZAxALTEZZA in pixel, per esempio "
                                  "1920x1080, tra 320x200 e 10000x10000).")
                       .arg(parser.value(size))
                << Qt::endl;
            *exitCode = 1;
            return options;
        }
    }
    if (!options.importFile.read(parser, err)) {
        *exitCode = 1;
        return options;
    }
    // An import reads --type itself: the other commands leave it to --check.
    if (options.importFile.requested())
        return options;
    // --level and --date mean something only to a print or an export.
    if (!options.history.read(parser, err) || !options.print.read(parser, err) || !options.exportList.read(parser, err)
        || (!options.print.requested() && !options.exportList.requested() && !options.history.requested()
            && !listoptions::readAlone(parser, err)))
        *exitCode = 1;
    return options;
}
