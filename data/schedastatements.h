#pragma once

#include <QString>

// Statements of the subject card that the standalone program offers in place of the suite's
// customer and supplier cards: the subject's master data and the classification lists it is in.
namespace schedastatements {

// Code, name, address, city, telephone and payment terms of a subject (one row, or none).
QString subjectQuery(int company, int subjectKind, qint64 subjectCode);

// The nodes of the subject in every classification type of the company, with the type, its
// division and the validity period; by type code, then start date.
QString listsQuery(int company, int subjectKind, qint64 subjectCode);

} // namespace schedastatements
