#pragma once

#include "framework/export/exportfile.h"
#include "framework/export/tablewriter.h"

#include <QObject>

class FormFrame;
class QToolButton;

namespace distinta {

class Albero;
class Selettore;

// Export of the classification as the tree shows it (down to the chosen level, as of the chosen
// date) to a spreadsheet: an XLSX workbook whose rows group like the tree, or a CSV file. The
// tree's own columns and texts go out, codes as numbers and dates as dates.
class Esportazione : public QObject
{
    Q_OBJECT

public:
    Esportazione(FormFrame &form, Albero &albero, Selettore &selettore);

    QToolButton *pulsante() const { return CMD_ESPORTA; }

    void CMD_ESPORTA_Click(fw::ExportFile::Format formato);
    // The nodes above the level limit, in tree order. A path that cannot be written is told
    // before any work; a failure or a cancel midway leaves no file behind and an older one as it
    // was.
    bool EsportaDistinta(const QString &percorso, fw::ExportFile::Format formato, const QString &testoLivello);

private:
    // A level column, then the tree's visible columns in their order; nomi gets their names.
    QList<fw::ExportColumn> colonneEsportazione(QStringList &nomi) const;

    FormFrame &m_form;
    Albero &m_albero;
    Selettore &m_selettore;
    QToolButton *CMD_ESPORTA;
};

} // namespace distinta
