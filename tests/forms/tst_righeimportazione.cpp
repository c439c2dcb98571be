#include "forms/distinta/pianoimportazione.h"
#include "forms/distinta/righeimportazione.h"

#include <QtTest>

using namespace Qt::StringLiterals;

// A file's cells read as an import reads them, and the plan of what each row would do, before
// any database is asked.
class TestRigheImportazione : public QObject
{
    Q_OBJECT

    using Cell = fw::ImportedCell;

    static Cell testo(const QString &text) { return {Cell::Kind::Text, text, 0, {}}; }
    static Cell numero(double value) { return {Cell::Kind::Number, QString::number(value), value, {}}; }
    static Cell data(int y, int m, int d)
    {
        return {Cell::Kind::Date, QDate(y, m, d).toString(u"dd/MM/yyyy"_s), 0, QDate(y, m, d)};
    }

    static distinta::CatalogoImportazione catalogo()
    {
        distinta::CatalogoImportazione catalogo;
        for (const qint64 code : {1, 2, 3, 4, 7, 12})
            catalogo.soggetti.insert(code, QStringLiteral("Cliente %1").arg(code));
        catalogo.priorita.insert(u"5"_s, 5);
        catalogo.priorita.insert(u"listino nord"_s, 5);
        catalogo.regoleFatturazione = {u"Cli per fatt."_s, u"Nodo padre"_s, u"Codice anagrafico"_s};
        catalogo.regolePromozioni = {u"Eredita"_s, u"Nessuna"_s, u"Proprie"_s};
        return catalogo;
    }

    static fw::ImportedTable tabella(const QStringList &headings, const QList<QList<Cell>> &rows,
                                     const QString &sheet = u"Clienti"_s)
    {
        fw::ImportedTable table;
        table.sheet = sheet;
        table.headingLine = 1;
        table.headings = headings;
        for (int i = 0; i < rows.size(); ++i)
            table.rows << fw::ImportedRow {i + 2, rows.at(i)};
        return table;
    }

private slots:
    // Codes, dates, rules and priorities as people type them, and what is refused, named by
    // sheet, row, column letter and heading.
    void valoriDelleCelle()
    {
        const QStringList headings {u"codice padre"_s,       u"Codice"_s,     u"Ragione sociale"_s,
                                    u"Data inizio"_s,        u"Data fine"_s,  u"Tipo fatturazione"_s,
                                    u"Priorità struttura"_s, u"Descrizione"_s};
        const auto riga = [](const Cell &codice, const Cell &inizio, const Cell &fine, const QString &regola = {},
                             const QString &priorita = {}, const QString &descrizione = u"Caffè “Al Borgo” 5 €"_s) {
            return QList<Cell> {testo({}), codice,        testo(u"ignorata"_s), inizio,
                                fine,      testo(regola), testo(priorita),      testo(descrizione)};
        };
        const auto lette = distinta::RigheImportazione::leggi(
            tabella(
                headings,
                {riga(testo(u"007"_s), data(2024, 1, 1), testo(u"31/12/2099"_s), u"nodo PADRE"_s, u"Listino Nord"_s),
                 riga(numero(12), numero(45292), testo(u"1/2/2024"_s), u"2"_s, u"5"_s),
                 riga(numero(12.5), data(2024, 1, 1), data(2024, 2, 1)),
                 riga(testo(u"-3"_s), data(2024, 1, 1), data(2024, 2, 1)),
                 riga(testo(u"99"_s), data(2024, 1, 1), data(2024, 2, 1)),
                 riga(testo(u"1"_s), testo(u"29/02/2023"_s), data(2024, 2, 1)),
                 riga(testo(u"1"_s), testo(u"29/02/2024"_s), testo(u"28/02/2024"_s)),
                 riga(testo(u"1"_s), data(2024, 1, 1), data(2024, 2, 1), u"Altro"_s),
                 riga(testo(u"1"_s), data(2024, 1, 1), data(2024, 2, 1), {}, u"Listino Sud"_s),
                 riga(testo(u"1"_s), data(2024, 1, 1), data(2024, 2, 1), {}, {}, u"Ελληνικά"_s)}),
            catalogo());
        QCOMPARE(lette.errore, QString());
        QCOMPARE(lette.righe.size(), 10);
        const distinta::RigaFile &prima = lette.righe.at(0);
        QCOMPARE(prima.codice, 7);
        QCOMPARE(prima.codicePadre, 0);
        QCOMPARE(prima.dataFine, QDate(2099, 12, 31));
        QCOMPARE(prima.tipoFatturazione, std::optional<int>(1));
        QCOMPARE(prima.prioritaStruttura, std::optional<qint64>(5));
        QCOMPARE(prima.descrizione, std::optional<QString>(u"Caffè “Al Borgo” 5 €"_s));
        QCOMPARE(prima.errore, QString());
        const distinta::RigaFile &seconda = lette.righe.at(1);
        QCOMPARE(seconda.dataInizio, QDate(2024, 1, 1));
        QCOMPARE(seconda.dataFine, QDate(2024, 2, 1));
        QCOMPARE(seconda.tipoFatturazione, std::optional<int>(2));
        QCOMPARE(seconda.errore, QString());
        QStringList errori;
        for (const distinta::RigaFile &letta : lette.righe.mid(2))
            errori << letta.errore;
        QCOMPARE(
            errori,
            QStringList({u"Foglio \"Clienti\", riga 4, colonna B (Codice): \"12.5\" non è un codice"_s,
                         u"Foglio \"Clienti\", riga 5, colonna B (Codice): \"-3\" non è un codice"_s,
                         u"Foglio \"Clienti\", riga 6, colonna B (Codice): il soggetto 99 non esiste"_s,
                         u"Foglio \"Clienti\", riga 7, colonna D (Data inizio): \"29/02/2023\" non è una data "
                         "(gg/mm/aaaa)"_s,
                         u"Foglio \"Clienti\", riga 8, colonna E (Data fine): la data di fine 28/02/2024 è "
                         "precedente alla data di inizio 29/02/2024"_s,
                         u"Foglio \"Clienti\", riga 9, colonna F (Tipo fatturazione): \"Altro\" non è un tipo di "
                         "fatturazione"_s,
                         u"Foglio \"Clienti\", riga 10, colonna G (Priorità struttura): la priorità \"Listino Sud\" "
                         "non esiste"_s,
                         u"Foglio \"Clienti\", riga 11, colonna H (Descrizione): il carattere \"Ε\" non si può "
                         "salvare nella distinta (solo caratteri dell'alfabeto latino occidentale)"_s}));
    }

    // The export's layout: each row's parent is the nearest row above one level up; a row whose
    // level has nothing above it is refused, and so is everything under a refused row.
    void livelliEPadri()
    {
        const QStringList headings {u"Livello"_s, u"Codice"_s, u"Data inizio"_s, u"Data fine"_s};
        const auto riga = [](int livello, int codice) {
            return QList<Cell> {numero(livello), numero(codice), data(2024, 1, 1), data(2099, 12, 31)};
        };
        const auto lette = distinta::RigheImportazione::leggi(
            tabella(headings, {riga(1, 1), riga(2, 2), riga(3, 3), riga(2, 4), riga(4, 7), riga(5, 12)}), catalogo());
        QCOMPARE(lette.errore, QString());
        // Node 10 holds 1 as a root; node 11 holds 2, but under another node.
        const QList<distinta::NodoEsistente> nodi {
            {10, 0, 1, QDate(2024, 1, 1), QDate(2099, 12, 31), 0, 0, {}, 0, 0, 0},
            {11, 99, 2, QDate(2024, 1, 1), QDate(2099, 12, 31), 0, 0, {}, 0, 0, 0}};
        const distinta::PianoImportazione piano = distinta::PianoImportazione::prepara(lette, nodi);
        QStringList esiti;
        for (const distinta::PianoImportazione::Voce &voce : piano.voci)
            esiti << QString::number(voce.padreNelFile) + u'|' + distinta::PianoImportazione::testoEsito(voce);
        QCOMPARE(esiti,
                 QStringList({u"-1|Invariato"_s,
                              u"0|Foglio \"Clienti\", riga 3, colonna A (Livello): il soggetto 2 dal 01/01/2024 "
                              "è già nella distinta sotto un altro padre, e l'importazione non sposta i nodi"_s,
                              u"1|Rifiutato: padre rifiutato"_s, u"0|Da inserire"_s,
                              u"-1|Foglio \"Clienti\", riga 6, colonna A (Livello): il livello 4 non ha sopra una "
                              "riga di livello 3"_s,
                              u"4|Rifiutato: padre rifiutato"_s}));
    }

    // A flat file's rows in any order, its parents named by code, and a loop of parents that
    // never reaches the tree; the same link twice is refused at its second row.
    void padriPerCodice()
    {
        const QStringList headings {u"Codice padre"_s, u"Codice"_s, u"Data inizio"_s, u"Data fine"_s};
        const auto riga = [](const QString &padre, int codice, int anno = 2024) {
            return QList<Cell> {testo(padre), numero(codice), data(anno, 1, 1), data(anno, 12, 31)};
        };
        const auto lette = distinta::RigheImportazione::leggi(
            tabella(headings,
                    {riga(u"2"_s, 3), riga({}, 2), riga(u"4"_s, 7), riga(u"7"_s, 4), riga(u"2"_s, 3), riga(u"1"_s, 12)},
                    {}),
            catalogo());
        const QList<distinta::NodoEsistente> nodi {
            {10, 0, 1, QDate(2020, 1, 1), QDate(2099, 12, 31), 0, 0, {}, 0, 0, 0}};
        const distinta::PianoImportazione piano = distinta::PianoImportazione::prepara(lette, nodi);
        QStringList esiti;
        for (const distinta::PianoImportazione::Voce &voce : piano.voci)
            esiti << QStringLiteral("%1|%2|").arg(voce.padreNelFile).arg(voce.idPadre)
                    + distinta::PianoImportazione::testoEsito(voce);
        QCOMPARE(esiti,
                 QStringList({u"1|0|Da inserire"_s, u"-1|0|Da inserire"_s, u"3|0|Rifiutato: padre rifiutato"_s,
                              u"2|0|Rifiutato: padre rifiutato"_s,
                              u"-1|0|Riga 6, campo 2 (Codice): il soggetto 3 dal 01/01/2024 compare già alla riga 2"_s,
                              u"-1|10|Da inserire"_s}));
        QCOMPARE(piano.quante(distinta::PianoImportazione::Esito::DaInserire), 3);
    }
};

QTEST_MAIN(TestRigheImportazione)
#include "tst_righeimportazione.moc"
