#pragma once

#include <QDate>
#include <QString>
#include <optional>

namespace distinta {

// The classification an import writes into, and what a new node takes that the file leaves out.
struct ContestoImportazione
{
    int ditta = 0;
    int tipoSoggetto = 0; // 0 customers, 1 suppliers
    std::optional<qint64> divisione;
    qint64 idTipo = 0;
    QString codiceTipo;
    QString descrizioneTipo;
    int statoLegame = 0;
    int regolaFatturazione = 0;
    QString gruppo;
    QString utente;
    QDate oggi;
};

} // namespace distinta
