#pragma once

#include <QDate>
#include <QString>

// "Dove è usato": every link of one subject in the classifications of a company.
namespace doveusatostatements {

// GD02_ID, GD01_ID, GD01_INDTIPOSOGG, GD01_CODICE, GD01_DESCR, Divisione (code and description as
// the type maintenance shows them, empty without one), CodicePadre and NomePadre (NULL and empty
// for a root), GD02_DATAINIZIOVAL, GD02_DATAFINEVAL and ValidaOggi (1 when the link holds on the
// day given; a missing date leaves its side open); by type code, then start date.
QString subjectLinksQuery(int company, int subjectKind, qint64 subjectCode, const QDate &today);

} // namespace doveusatostatements
