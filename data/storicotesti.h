#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>
#include <functional>

// The journal's rows as a clerk reads them: "Inserito sotto 1135 Drogheria Caputo S.r.l. dal
// 01/01/2025 al 31/12/2099", "Data fine: 31/12/2099 → 30/06/2025". Pure functions: the names of
// what the rows keep as codes and keys come from the caller.
namespace storicotesti {

// One row of the journal: a table's row as it was before and after.
struct Voce
{
    QString tabella;
    QChar azione;      // 'I' inserted, 'U' changed, 'D' removed
    QJsonObject prima; // empty when inserted
    QJsonObject dopo;  // empty when removed
};

struct Nomi
{
    std::function<QString(int tipoSoggetto, qint64 codice)> soggetto; // the subject's name
    std::function<QString(qint64 idNodo)> nodo;         // "1135 Drogheria Caputo S.r.l."; empty if unknown
    std::function<QString(qint64 idPriorita)> priorita; // "GDO - Grande distribuzione"
    std::function<QString(qint64 idCampagna)> campagna; // "PR25 - Promozione estiva"
    std::function<QString(qint64 idStato)> stato;       // "Attivo"
};

// One thing that changed: the field, its value before and after, and the sentence that says it.
struct Riga
{
    QString campo;
    QString prima;
    QString dopo;
    QString testo;
};

// What a row of the journal changed, field by field; an insertion or a removal of a node is one
// sentence. The change stamps and keys are not shown.
QList<Riga> righe(const Voce &voce, const Nomi &nomi);

// "1135 Drogheria Caputo S.r.l." for a node's row: its subject's code and name.
QString soggettoDelNodo(const QJsonObject &nodo, const Nomi &nomi);

// A stored date as dd/mm/yyyy; empty for none.
QString data(const QJsonValue &value);

} // namespace storicotesti
