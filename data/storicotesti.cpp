#include "data/storicotesti.h"

#include "data/testiregole.h"

#include <QDateTime>
#include <QJsonValue>
#include <QVariant>

namespace storicotesti {

namespace {

const QString freccia = QStringLiteral(" → ");

enum class Genere { Testo, Data, Numero, Soggetto, Nodo, Priorita, Stato, Regola, SiNo, TipoSoggetto };

struct Campo
{
    const char *colonna;
    const char *nome;
    Genere genere;
    const QStringList *regole = nullptr;
};

const QList<Campo> &campi(const QString &tabella)
{
    static const QList<Campo> nodi {
        {"GD02_IDPARENT_GD02", "Padre", Genere::Nodo},
        {"GD02_CLIFOR_CG44", "Soggetto", Genere::Soggetto},
        {"GD02_DATAINIZIOVAL", "Data inizio", Genere::Data},
        {"GD02_DATAFINEVAL", "Data fine", Genere::Data},
        {"GD02_TIPOANAGFATT", "Tipo fatturazione", Genere::Regola, &testiregole::regoleFatturazione()},
        {"GD02_CLIFORFATT_CG44", "Codice fatturazione", Genere::Soggetto},
        {"GD02_DESCR", "Descrizione", Genere::Testo},
        {"GD02_IDSTRUTTURA_LP09", "Priorità struttura", Genere::Priorita},
        {"GD02_IDLOCALIZZATA_LP09", "Priorità localizzata", Genere::Priorita},
        {"GD02_INDEREPROMO", "Promozioni", Genere::Regola, &testiregole::regolePromozioniNodo()},
        {"GD02_ID_WF02", "Stato", Genere::Stato},
        {"GD02_INDREGPROV", "Regola provvigioni", Genere::Numero},
    };
    static const QList<Campo> tipi {
        {"GD01_CODICE", "Codice", Genere::Testo},
        {"GD01_DESCR", "Descrizione", Genere::Testo},
        {"GD01_INDTIPOSOGG", "Tipo soggetto", Genere::TipoSoggetto},
        {"GD01_IDDIV_CO1A", "Divisione", Genere::Numero},
        {"GD01_ID_LP09", "Priorità listini", Genere::Priorita},
    };
    static const QList<Campo> parametri {
        {"GD03_TIPOCARICODATA", "Caricamento date", Genere::Regola, &testiregole::caricamentoDate()},
        {"GD03_DATAINIZIOVAL", "Data inizio", Genere::Data},
        {"GD03_DATAFINEVAL", "Data fine", Genere::Data},
        {"GD03_TIPOANAGFATT", "Tipo fatturazione", Genere::Regola, &testiregole::regoleFatturazione()},
        {"GD03_ID_WF02", "Stato", Genere::Stato},
        {"GD03_FLG_ANAG", "Dati anagrafici", Genere::SiNo},
        {"GD03_FLG_CONDVEND", "Condizioni di vendita", Genere::SiNo},
        {"GD03_FLG_CLAS", "Classificazioni", Genere::SiNo},
        {"GD03_FLG_PROV", "Provvigioni", Genere::SiNo},
    };
    static const QList<Campo> stati {{"WF02_ID_WF01", "Stato", Genere::Stato}};
    static const QList<Campo> nessuno;
    if (tabella == QLatin1String("GD02_DISTINTA"))
        return nodi;
    if (tabella == QLatin1String("GD01_TIPODISTINTA"))
        return tipi;
    if (tabella == QLatin1String("GD03_PARAMETRI"))
        return parametri;
    if (tabella == QLatin1String("WF02_STATORIGA"))
        return stati;
    return nessuno;
}

bool vuoto(const QJsonValue &value)
{
    return value.isNull() || value.isUndefined() || (value.isString() && value.toString().isEmpty());
}

qint64 numero(const QJsonValue &value)
{
    return value.isString() ? value.toString().toLongLong() : qint64(value.toDouble());
}

QString chiamato(const std::function<QString(qint64)> &nome, qint64 id)
{
    return nome ? nome(id) : QString();
}

QString valore(const Campo &campo, const QJsonObject &riga, const Nomi &nomi)
{
    const QJsonValue value = riga.value(QLatin1String(campo.colonna));
    if (campo.genere == Genere::Nodo && (vuoto(value) || numero(value) == 0))
        return QStringLiteral("capostipite");
    if (vuoto(value))
        return {};
    switch (campo.genere) {
    case Genere::Data: return data(value);
    case Genere::Soggetto: {
        const int tipo = int(numero(riga.value(QStringLiteral("GD02_TIPOCF_CG44"))));
        const QString nome = nomi.soggetto ? nomi.soggetto(tipo, numero(value)) : QString();
        return QString::number(numero(value)) + (nome.isEmpty() ? QString() : QLatin1Char(' ') + nome);
    }
    case Genere::Nodo: {
        const QString nome = chiamato(nomi.nodo, numero(value));
        return nome.isEmpty() ? QStringLiteral("nodo %1").arg(numero(value)) : nome;
    }
    case Genere::Priorita: {
        const QString nome = chiamato(nomi.priorita, numero(value));
        return nome.isEmpty() ? QString::number(numero(value)) : nome;
    }
    case Genere::Stato: {
        const QString nome = chiamato(nomi.stato, numero(value));
        return nome.isEmpty() ? QString::number(numero(value)) : nome;
    }
    case Genere::Regola: return testiregole::testo(*campo.regole, QVariant(numero(value)));
    case Genere::SiNo: return numero(value) != 0 ? QStringLiteral("Sì") : QStringLiteral("No");
    case Genere::TipoSoggetto: return numero(value) != 0 ? QStringLiteral("Fornitore") : QStringLiteral("Cliente");
    case Genere::Numero: return QString::number(numero(value));
    case Genere::Testo: break;
    }
    return value.toString();
}

QString periodo(const QJsonObject &nodo)
{
    return QStringLiteral("dal %1 al %2")
        .arg(data(nodo.value(QStringLiteral("GD02_DATAINIZIOVAL"))),
             data(nodo.value(QStringLiteral("GD02_DATAFINEVAL"))));
}

// "sotto 1135 Drogheria Caputo S.r.l. dal 01/01/2025 al 31/12/2099", or "come capostipite dal ...".
QString posizione(const QJsonObject &nodo, const Nomi &nomi)
{
    static const Campo padre {"GD02_IDPARENT_GD02", "Padre", Genere::Nodo};
    const QString sopra = valore(padre, nodo, nomi);
    return (sopra == QLatin1String("capostipite") ? QStringLiteral("come capostipite")
                                                  : QStringLiteral("sotto ") + sopra)
        + QLatin1Char(' ') + periodo(nodo);
}

QString nomeTipo(const QJsonObject &tipo)
{
    const QString descrizione = tipo.value(QStringLiteral("GD01_DESCR")).toString();
    return tipo.value(QStringLiteral("GD01_CODICE")).toString()
        + (descrizione.isEmpty() ? QString() : QStringLiteral(" - ") + descrizione);
}

} // namespace

QString data(const QJsonValue &value)
{
    if (vuoto(value))
        return {};
    const QString text = value.toString();
    QDate day = QDate::fromString(text.left(10), QStringLiteral("yyyy-MM-dd"));
    if (!day.isValid())
        day = QDateTime::fromString(text, Qt::ISODateWithMs).date();
    return day.isValid() ? day.toString(QStringLiteral("dd/MM/yyyy")) : text;
}

QString soggettoDelNodo(const QJsonObject &nodo, const Nomi &nomi)
{
    static const Campo soggetto {"GD02_CLIFOR_CG44", "Soggetto", Genere::Soggetto};
    return valore(soggetto, nodo, nomi);
}

QList<Riga> righe(const Voce &voce, const Nomi &nomi)
{
    const bool inserita = voce.azione == QLatin1Char('I');
    const bool tolta = voce.azione == QLatin1Char('D');
    if (voce.tabella == QLatin1String("GD02_DISTINTA") && (inserita || tolta)) {
        const QString dove = posizione(inserita ? voce.dopo : voce.prima, nomi);
        return {inserita ? Riga {QStringLiteral("Nodo"), {}, dove, QStringLiteral("Inserito ") + dove}
                         : Riga {QStringLiteral("Nodo"), dove, {}, QStringLiteral("Eliminato: era ") + dove}};
    }
    if (voce.tabella == QLatin1String("GD12_PROMO")) {
        const QJsonObject &riga = inserita ? voce.dopo : voce.prima;
        const qint64 campagna = numero(riga.value(QStringLiteral("GD12_ID_MG94")));
        QString nome = chiamato(nomi.campagna, campagna);
        if (nome.isEmpty())
            nome = QString::number(campagna);
        return {inserita ? Riga {QStringLiteral("Campagna in fattura"),
                                 {},
                                 nome,
                                 QStringLiteral("Campagna in fattura aggiunta: ") + nome}
                         : Riga {QStringLiteral("Campagna in fattura"),
                                 nome,
                                 {},
                                 QStringLiteral("Campagna in fattura tolta: ") + nome}};
    }
    if (voce.tabella == QLatin1String("GD01_TIPODISTINTA") && (inserita || tolta)) {
        const QString nome = nomeTipo(inserita ? voce.dopo : voce.prima);
        return {
            inserita
                ? Riga {QStringLiteral("Tipo distinta"), {}, nome, QStringLiteral("Tipo distinta creato: ") + nome}
                : Riga {QStringLiteral("Tipo distinta"), nome, {}, QStringLiteral("Tipo distinta eliminato: ") + nome}};
    }
    QList<Riga> result;
    for (const Campo &campo : campi(voce.tabella)) {
        const QString prima = inserita ? QString() : valore(campo, voce.prima, nomi);
        const QString dopo = tolta ? QString() : valore(campo, voce.dopo, nomi);
        if (prima == dopo) // unchanged, or empty on both sides
            continue;
        const QString nome = QString::fromUtf8(campo.nome);
        result.append({nome, prima, dopo, nome + QStringLiteral(": ") + prima + freccia + dopo});
    }
    return result;
}

} // namespace storicotesti
