#pragma once

#include "platform/db/connection.h"

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>

namespace distinta {

// One link of a subject in a classification of the company.
struct Uso
{
    qint64 idNodo = 0;
    QString chiaveTipo; // the selector's key of the classification
    QString codiceTipo;
    QString descrizioneTipo;
    QString divisione;   // "ALI - Alimentari", empty without one
    QString codicePadre; // empty for a root
    QString nomePadre;
    QString inizio; // dd/MM/yyyy, empty when missing
    QString fine;
    bool validaOggi = false;
};

// "Dove è usato": every classification that links a subject, with its periods, by type code
// then start date.
class DoveUsato
{
public:
    // Throws db::DatabaseError.
    static QList<Uso> leggi(const db::ConnectionPtr &connection, int company, int subjectKind, qint64 subjectCode,
                            const QDate &today);
    // The subject's business name; empty when the company has no such subject. Throws db::DatabaseError.
    static QString nome(const db::ConnectionPtr &connection, int company, int subjectKind, qint64 subjectCode);

    static QStringList intestazioni();
    static QStringList testi(const Uso &uso);
};

} // namespace distinta
