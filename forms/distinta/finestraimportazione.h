#pragma once

#include "forms/distinta/pianoimportazione.h"
#include "framework/export/exportfile.h"

#include <QWidget>

class FormFrame;
class QLabel;
class QPushButton;
class QTableWidget;
class QToolButton;

namespace distinta {

// The dry run of an import, in a window of its own beside the editor: every row of the file
// with its fate, and "Applica" to write the accepted ones. The window writes nothing itself:
// it asks whoever opened it.
class FinestraImportazione : public QWidget
{
    Q_OBJECT

public:
    FinestraImportazione(FormFrame &form, const QString &file, const QString &distinta);

    void mostra(const PianoImportazione &piano);
    // The rows were written: nothing more to apply.
    void applicata();
    void CMD_SALVAIMPORTA_Click(fw::ExportFile::Format formato);
    const PianoImportazione &piano() const { return m_piano; }
    QPushButton *applica() const { return CMD_APPLICA; }

signals:
    void applicaRichiesta();

private:
    FormFrame &m_form;
    QString m_file;
    QLabel *LBL_RIEPILOGO;
    QPushButton *CMD_APPLICA;
    QToolButton *CMD_SALVAIMPORTA;
    QTableWidget *GRD_IMPORTA;
    PianoImportazione m_piano;
};

} // namespace distinta
