#include "forms/distinta/doveusato.h"

#include "data/doveusatostatements.h"
#include "data/sqltext.h"
#include "data/storicostatements.h"
#include "forms/distinta/selettore.h"
#include "platform/db/recordset.h"

namespace distinta {

QList<Uso> DoveUsato::leggi(const db::ConnectionPtr &connection, int company, int subjectKind, qint64 subjectCode,
                            const QDate &today)
{
    const db::RecordsetPtr righe = connection->openRecordset(
        doveusatostatements::subjectLinksQuery(company, subjectKind, subjectCode, today));
    const auto campo = [&](int row, const char *field) {
        return righe->valueAt(row, righe->fieldIndex(QLatin1String(field)));
    };
    const auto data = [](const QVariant &value) {
        return value.isNull() ? QString() : sqltext::dayMonthYear(value.toDateTime());
    };
    QList<Uso> usi;
    usi.reserve(righe->recordCount());
    for (int row = 0; row < righe->recordCount(); ++row) {
        Uso uso;
        uso.idNodo = campo(row, "GD02_ID").toLongLong();
        uso.chiaveTipo = Selettore::chiaveDelTipo(campo(row, "GD01_INDTIPOSOGG").toInt(),
                                                  campo(row, "GD01_ID").toLongLong());
        uso.codiceTipo = campo(row, "GD01_CODICE").toString().trimmed();
        uso.descrizioneTipo = campo(row, "GD01_DESCR").toString().trimmed();
        uso.divisione = campo(row, "Divisione").toString().trimmed();
        const QVariant padre = campo(row, "CodicePadre");
        uso.codicePadre = padre.isNull() ? QString() : QString::number(padre.toLongLong());
        uso.nomePadre = campo(row, "NomePadre").toString().trimmed();
        uso.inizio = data(campo(row, "GD02_DATAINIZIOVAL"));
        uso.fine = data(campo(row, "GD02_DATAFINEVAL"));
        uso.validaOggi = campo(row, "ValidaOggi").toInt() == 1;
        usi.append(uso);
    }
    return usi;
}

QString DoveUsato::nome(const db::ConnectionPtr &connection, int company, int subjectKind, qint64 subjectCode)
{
    const db::RecordsetPtr riga = connection->openRecordset(
        storicostatements::subjectNameQuery(company, subjectKind, subjectCode));
    return riga->isEmpty() ? QString() : riga->valueAt(0, 0).toString().trimmed();
}

QStringList DoveUsato::intestazioni()
{
    return {QStringLiteral("Distinta"),     QStringLiteral("Descrizione"), QStringLiteral("Divisione"),
            QStringLiteral("Codice padre"), QStringLiteral("Padre"),       QStringLiteral("Data inizio"),
            QStringLiteral("Data fine"),    QStringLiteral("Valida oggi")};
}

QStringList DoveUsato::testi(const Uso &uso)
{
    return {uso.codiceTipo, uso.descrizioneTipo,
            uso.divisione,  uso.codicePadre,
            uso.nomePadre,  uso.inizio,
            uso.fine,       uso.validaOggi ? QStringLiteral("Sì") : QStringLiteral("No")};
}

} // namespace distinta
