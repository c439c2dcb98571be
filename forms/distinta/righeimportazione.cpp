#include "forms/distinta/righeimportazione.h"

#include <cmath>

namespace distinta {

namespace {

using Cell = fw::ImportedCell;

using Colonna = RigheImportazione::Colonna;
using enum RigheImportazione::Colonna;

// The first character the text columns cannot hold: they keep the western code page (Latin-1
// and the typographic signs Windows adds to it, the euro among them). Null when there is none.
QChar fuoriDalDatabase(const QString &text)
{
    static const QString windows = QStringLiteral("€‚ƒ„…†‡ˆ‰Š‹ŒŽ‘’“”•–—˜™š›œžŸ");
    for (const QChar c : text) {
        if (c.unicode() > 0xFF && !windows.contains(c))
            return c;
    }
    return {};
}

QString letteraColonna(int index)
{
    QString letters;
    for (int n = index + 1; n > 0; n = (n - 1) / 26)
        letters.prepend(QChar(u'A' + (n - 1) % 26));
    return letters;
}

class LettoreRiga
{
public:
    LettoreRiga(const RigheImportazione &lette, const fw::ImportedRow &riga)
        : m_lette(lette)
        , m_riga(riga)
    { }

    bool presente(Colonna colonna) const { return m_lette.colonne.at(colonna) >= 0; }

    Cell cella(Colonna colonna) const
    {
        const int index = m_lette.colonne.at(colonna);
        return index >= 0 && index < m_riga.cells.size() ? m_riga.cells.at(index) : Cell {};
    }

    QString testo(Colonna colonna) const { return cella(colonna).text.trimmed(); }

    // Records the first error of the row only: one reason is enough to set it aside.
    void errore(Colonna colonna, const QString &motivo)
    {
        if (m_errore.isEmpty())
            m_errore = m_lette.erroreIn(m_riga.line, colonna, motivo);
    }

    const QString &erroreTrovato() const { return m_errore; }

    // A whole number written as a number or as digits (leading zeros allowed).
    std::optional<qint64> intero(Colonna colonna, const QString &cosa)
    {
        const Cell c = cella(colonna);
        if (c.kind == Cell::Kind::Empty || (c.kind == Cell::Kind::Text && c.text.trimmed().isEmpty()))
            return std::nullopt;
        if (c.kind == Cell::Kind::Number) {
            if (c.number == std::floor(c.number) && std::abs(c.number) < 1e15)
                return qint64(c.number);
        } else {
            bool ok = false;
            const QString text = c.text.trimmed();
            const qint64 value = text.toLongLong(&ok);
            if (ok && !text.startsWith(u'+') && !text.startsWith(u'-'))
                return value;
        }
        errore(colonna, QStringLiteral("\"%1\" non è %2").arg(c.text.trimmed(), cosa));
        return std::nullopt;
    }

    std::optional<QDate> data(Colonna colonna)
    {
        const Cell c = cella(colonna);
        if (c.kind == Cell::Kind::Date)
            return c.date;
        if (c.kind == Cell::Kind::Number && c.number == std::floor(c.number) && c.number > 0 && c.number < 2958466) {
            // A serial number of the 1900 system, as a date written without a date's format.
            return QDate(1899, 12, 30).addDays(qint64(c.number));
        }
        const QString text = c.text.trimmed();
        if (text.isEmpty())
            return std::nullopt;
        for (const QString &format : {QStringLiteral("dd/MM/yyyy"), QStringLiteral("d/M/yyyy")}) {
            const QDate day = QDate::fromString(text, format);
            if (day.isValid())
                return day;
        }
        errore(colonna, QStringLiteral("\"%1\" non è una data (gg/mm/aaaa)").arg(text));
        return std::nullopt;
    }

    // A coded rule given by its text or its code.
    std::optional<int> regola(Colonna colonna, const QStringList &testi, const QString &cosa)
    {
        const QString text = testo(colonna);
        if (cella(colonna).kind == Cell::Kind::Empty || text.isEmpty())
            return std::nullopt;
        for (int code = 0; code < testi.size(); ++code) {
            if (text.compare(testi.at(code), Qt::CaseInsensitive) == 0 || text == QString::number(code))
                return code;
        }
        errore(colonna, QStringLiteral("\"%1\" non è %2").arg(text, cosa));
        return std::nullopt;
    }

    std::optional<qint64> priorita(Colonna colonna, const QHash<QString, qint64> &priorita)
    {
        const QString text = testo(colonna);
        if (text.isEmpty())
            return presente(colonna) ? std::optional<qint64>(0) : std::nullopt;
        const auto found = priorita.constFind(text.toLower());
        if (found != priorita.constEnd())
            return *found;
        errore(colonna, QStringLiteral("la priorità \"%1\" non esiste").arg(text));
        return std::nullopt;
    }

private:
    const RigheImportazione &m_lette;
    const fw::ImportedRow &m_riga;
    QString m_errore;
};

} // namespace

// The headings the import knows; the others (a business name, say) are read past.
const QStringList &RigheImportazione::intestazioni()
{
    static const QStringList texts {QStringLiteral("Livello"),
                                    QStringLiteral("Codice padre"),
                                    QStringLiteral("Codice"),
                                    QStringLiteral("Data inizio"),
                                    QStringLiteral("Data fine"),
                                    QStringLiteral("Tipo fatturazione"),
                                    QStringLiteral("Codice anagrafica"),
                                    QStringLiteral("Descrizione"),
                                    QStringLiteral("Priorità struttura"),
                                    QStringLiteral("Priorità localizzata"),
                                    QStringLiteral("Promozioni")};
    return texts;
}

QString RigheImportazione::erroreIn(int riga, Colonna colonna, const QString &motivo) const
{
    const int index = colonne.at(colonna);
    const QString dove = foglio.isEmpty()
        ? QStringLiteral("Riga %1, campo %2").arg(riga).arg(index + 1)
        : QStringLiteral("Foglio \"%1\", riga %2, colonna %3").arg(foglio).arg(riga).arg(letteraColonna(index));
    return QStringLiteral("%1 (%2): %3").arg(dove, intestazioni().at(colonna), motivo);
}

RigheImportazione RigheImportazione::leggi(const fw::ImportedTable &tabella, const CatalogoImportazione &catalogo)
{
    RigheImportazione letto;
    letto.foglio = tabella.sheet;
    letto.colonne = QList<int>(NumeroColonne, -1);
    QList<int> &colonne = letto.colonne;
    for (int i = 0; i < tabella.headings.size(); ++i) {
        int colonna = 0;
        while (colonna < NumeroColonne
               && tabella.headings.at(i).trimmed().compare(intestazioni().at(colonna), Qt::CaseInsensitive) != 0)
            ++colonna;
        if (colonna == NumeroColonne)
            continue;
        if (colonne.at(colonna) >= 0) {
            letto.errore = QStringLiteral("L'intestazione \"%1\" compare due volte (colonne %2 e %3).")
                               .arg(intestazioni().at(colonna))
                               .arg(colonne.at(colonna) + 1)
                               .arg(i + 1);
            return letto;
        }
        colonne[colonna] = i;
    }
    if ((colonne.at(Livello) >= 0) == (colonne.at(CodicePadre) >= 0)) {
        letto.errore = QStringLiteral("Il file deve avere la colonna \"Livello\" (come la esporta la distinta) "
                                      "oppure la colonna \"Codice padre\", non entrambe.");
        return letto;
    }
    for (const Colonna richiesta : {Codice, DataInizio, DataFine}) {
        if (colonne.at(richiesta) < 0) {
            letto.errore = QStringLiteral("Manca la colonna \"%1\".").arg(intestazioni().at(richiesta));
            return letto;
        }
    }

    const QHash<qint64, QString> &soggetti = catalogo.soggetti;
    for (const fw::ImportedRow &row : tabella.rows) {
        LettoreRiga lettore(letto, row);
        RigaFile riga;
        riga.riga = row.line;
        if (lettore.presente(Livello)) {
            const std::optional<qint64> livello = lettore.intero(Livello, QStringLiteral("un livello"));
            if (livello && *livello >= 1 && *livello <= 1000)
                riga.livello = int(*livello);
            else
                lettore.errore(Livello, QStringLiteral("manca il livello"));
        } else {
            riga.codicePadre = lettore.intero(CodicePadre, QStringLiteral("un codice")).value_or(0);
            if (riga.codicePadre != 0 && !soggetti.contains(riga.codicePadre))
                lettore.errore(CodicePadre, QStringLiteral("il soggetto %1 non esiste").arg(riga.codicePadre));
        }
        const std::optional<qint64> codice = lettore.intero(Codice, QStringLiteral("un codice"));
        if (!codice)
            lettore.errore(Codice, QStringLiteral("manca il codice"));
        else if (!soggetti.contains(*codice))
            lettore.errore(Codice, QStringLiteral("il soggetto %1 non esiste").arg(*codice));
        riga.codice = codice.value_or(0);

        const std::optional<QDate> inizio = lettore.data(DataInizio);
        const std::optional<QDate> fine = lettore.data(DataFine);
        if (!inizio)
            lettore.errore(DataInizio, QStringLiteral("manca la data di inizio"));
        if (!fine)
            lettore.errore(DataFine, QStringLiteral("manca la data di fine"));
        if (inizio && fine && *fine < *inizio) {
            lettore.errore(
                DataFine,
                QStringLiteral("la data di fine %1 è precedente alla data di inizio %2")
                    .arg(fine->toString(QStringLiteral("dd/MM/yyyy")), inizio->toString(QStringLiteral("dd/MM/yyyy"))));
        }
        riga.dataInizio = inizio.value_or(QDate());
        riga.dataFine = fine.value_or(QDate());

        if (lettore.presente(TipoFatturazione))
            riga.tipoFatturazione = lettore.regola(TipoFatturazione, catalogo.regoleFatturazione,
                                                   QStringLiteral("un tipo di fatturazione"));
        if (lettore.presente(CodiceFatturazione)) {
            riga.codiceFatturazione = lettore.intero(CodiceFatturazione, QStringLiteral("un codice")).value_or(0);
            if (*riga.codiceFatturazione != 0 && !soggetti.contains(*riga.codiceFatturazione))
                lettore.errore(CodiceFatturazione,
                               QStringLiteral("il soggetto %1 non esiste").arg(*riga.codiceFatturazione));
        }
        if (lettore.presente(Descrizione)) {
            riga.descrizione = lettore.testo(Descrizione);
            if (const QChar estraneo = fuoriDalDatabase(*riga.descrizione); !estraneo.isNull())
                lettore.errore(Descrizione,
                               QStringLiteral("il carattere \"%1\" non si può salvare nella distinta "
                                              "(solo caratteri dell'alfabeto latino occidentale)")
                                   .arg(estraneo));
        }
        riga.prioritaStruttura = lettore.priorita(PrioritaStruttura, catalogo.priorita);
        riga.prioritaLocalizzata = lettore.priorita(PrioritaLocalizzata, catalogo.priorita);
        if (lettore.presente(Promozioni))
            riga.promozioni = lettore.regola(Promozioni, catalogo.regolePromozioni,
                                             QStringLiteral("una regola delle promozioni"));
        riga.errore = lettore.erroreTrovato();
        letto.righe << riga;
    }
    return letto;
}

} // namespace distinta
