#pragma once

#include "framework/export/tablewriter.h"

#include <QString>
#include <functional>
#include <memory>

class QObject;
class QToolButton;
class QWidget;

namespace fw {

// The file an export writes: its checks before any work starts, and the user's choice of it.
class ExportFile
{
public:
    enum class Format { Xlsx, Csv };

    // Why path cannot be written (empty when it can); nothing is created or changed.
    static QString problem(const QString &path);
    static QString cannotWrite(const QString &path, const QString &reason);

    static QString extension(Format format);
    // A file name, without extension, made of a text the user reads (a classification's code and
    // description): characters that file systems refuse become "_", and the dots and blanks
    // that would end it go, so that the extension follows a word.
    static QString fileNameFor(const QString &title);
    // The save dialog of the platform; empty when the user cancels.
    static QString choose(QWidget *parent, Format format, const QString &proposed);
    // The same, proposing the user's documents folder and a name made of title.
    static QString chooseInDocuments(QWidget *parent, Format format, const QString &title);

    // The writer of a format, for a tree or a flat list.
    static std::unique_ptr<TableWriter> writer(Format format, TableShape shape = TableShape::Tree);

    // A button whose menu offers the two formats ("Cartella di lavoro Excel (XLSX)...", "Testo
    // CSV ..."); chosen is called with the one picked, in receiver's lifetime.
    static QToolButton *menuButton(const QString &objectName, const QString &text, const QString &toolTip,
                                   QObject *receiver, const std::function<void(Format)> &chosen);
};

} // namespace fw
