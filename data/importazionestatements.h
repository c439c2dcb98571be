#pragma once

#include <QString>

// What an import reads its file's codes and texts against.
namespace importazionestatements {

// CG44_CLIFOR and CG16_RAGSOANAG of every subject of one kind of the company.
QString subjectsQuery(int company, int subjectKind);
// LP09_ID and LP09_DESCR of every price-list priority.
QString prioritiesQuery();

} // namespace importazionestatements
