#include "shell/printrequest.h"

#include <QCommandLineParser>
#include <QTextStream>

namespace {

const QString printOption = QStringLiteral("print");
const QString levelOption = QStringLiteral("level");
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
        {levelOption,
         QStringLiteral("Con --print: fino a quale livello (0: solo i capostipiti; senza: tutta la distinta)."),
         QStringLiteral("N")},
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
        for (const QString &option : {levelOption, pdfOption, printedByOption, printedForOption, notesOption}) {
            // The export reads the level as the print does.
            if (option == levelOption && parser.isSet(QStringLiteral("export")))
                continue;
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
    if (!readLevel(parser, err, level))
        return false;
    printedBy = parser.value(printedByOption);
    printedFor = parser.value(printedForOption);
    notes = parser.value(notesOption);
    return true;
}

bool PrintRequest::readLevel(const QCommandLineParser &parser, QTextStream &err, std::optional<int> &level)
{
    if (!parser.isSet(levelOption))
        return true;
    bool numeric = false;
    const int value = parser.value(levelOption).trimmed().toInt(&numeric);
    if (!numeric || value < 0 || value > 32766) {
        err << QStringLiteral("Livello non valido: %1 (un numero da 0 in su).").arg(parser.value(levelOption))
            << Qt::endl;
        return false;
    }
    level = value;
    return true;
}
