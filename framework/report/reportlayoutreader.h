#pragma once

#include "framework/report/reportlayout.h"

#include <QString>
#include <stdexcept>

namespace fw {

// A layout file that cannot be used: the message names the file and, where there is one, the
// line ("Modello di stampa \"…/VRAX_DISTINTA.layout\", riga 12: …").
class ReportLayoutError : public std::runtime_error
{
public:
    ReportLayoutError(const QString &fileName, int line, const QString &problem);

    QString fileName() const { return m_fileName; }
    int line() const { return m_line; } // 0: the file as a whole
    QString problem() const { return m_problem; }
    QString message() const { return QString::fromUtf8(what()); }

private:
    QString m_fileName;
    int m_line;
    QString m_problem;
};

// Reads a report layout. The format is line-based, one statement per line, blanks between
// words; "#" starts a comment; texts go between double quotes ("" inside stands for one quote).
// Sizes are millimetres, font sizes points.
//
//   layout 1                                  first statement: the format's version
//   page A4 portrait                          A3, A4, A5, Letter, Legal; portrait or landscape
//   margins left 12 top 12 right 12 bottom 14 any of the four
//   font "DejaVu Sans" 8                      family and size of every text
//   parameter ESEGUITODA                      a parameter field the caller fills in
//
//   title | header | group FIELD | detail | footer      a band, up to "end"
//     row 5 [rule-above] [rule-below]         a line of the band, 5 mm high
//       text X WIDTH "Pagina {page} di {pages}" [options]
//       field X WIDTH FIELD [options]         the same as text X WIDTH "{field:FIELD}"
//   end
//
// The title band opens the first page; the header repeats at the top of every page, the footer
// at the bottom; a group band is printed before the first row and whenever its field changes
// (outer groups first); the detail band once per row of the query.
// Placeholders: {title} {page} {pages} {date} {time} {param:NAME} {field:NAME}; {{ and }} are
// braces. Options: bold, italic, size N, left, center, right, date "dd/MM/yyyy", decimals N,
// indent FIELD STEP (moves the cell right by STEP mm for every level past the first, the level
// being the number the field holds: "...3" is level 3).
class ReportLayoutReader
{
public:
    // Throws ReportLayoutError, also for a file that cannot be read.
    static ReportLayout readFile(const QString &path);
    static ReportLayout read(const QString &text, const QString &fileName);
};

} // namespace fw
