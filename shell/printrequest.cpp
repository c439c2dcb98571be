#include "shell/printrequest.h"

#include "shell/listoptions.h"

#include <QCommandLineParser>
#include <QTextStream>

namespace {

const QString printOption = QStringLiteral("print");
const QString pdfOption = QStringLiteral("pdf");
const QString printedByOption = QStringLiteral("printed-by");
const QString printedForOption = QStringLiteral("printed-for");
const QString notesOption = QStringLiteral("notes");

} // namespace

QList<QCommandLineOption> PrintRequest::options()
{
    return {
        {printOption, QStringLiteral("Stampa senza finestre la distinta del tipo indicato nel file PDF di --pdf."),
         QStringLiteral("codice")},
        {pdfOption, QStringLiteral("Con --print: il file PDF da scrivere."), QStringLiteral("file.pdf")},
        {printedByOption, QStringLiteral("Con --print: \"Eseguito da\" (predefinito: l'utente)."),
         QStringLiteral("testo")},
        {printedForOption, QStringLiteral("Con --print: \"Destinato a\"."), QStringLiteral("testo")},
        {notesOption, QStringLiteral("Con --print: le note."), QStringLiteral("testo")},
    };
}

bool PrintRequest::read(const QCommandLineParser &parser, QTextStream &err)
{
    if (!parser.isSet(printOption)) {
        for (const QString &option : {pdfOption, printedByOption, printedForOption, notesOption}) {
            if (parser.isSet(option)) {
                err << QStringLiteral("L'opzione --%1 vale solo con --print.").arg(option) << Qt::endl;
                return false;
            }
        }
        return true;
    }
    typeCode = parser.value(printOption).trimmed();
    if (typeCode.isEmpty()) {
        err << QStringLiteral("Indicare con --print il codice del tipo di distinta da stampare.") << Qt::endl;
        return false;
    }
    pdfPath = parser.value(pdfOption).trimmed();
    if (pdfPath.isEmpty()) {
        err << QStringLiteral("Con --print indicare con --pdf il file PDF da scrivere.") << Qt::endl;
        return false;
    }
    if (!listoptions::read(parser, err, level, date))
        return false;
    printedBy = parser.value(printedByOption);
    printedFor = parser.value(printedForOption);
    notes = parser.value(notesOption);
    return true;
}
