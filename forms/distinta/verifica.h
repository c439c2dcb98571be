#pragma once

#include <QDate>
#include <QString>
#include <QVariant>

class FormFrame;

namespace db {
class Recordset;
}

namespace distinta {

class Albero;
class ControlliLegami;

// The checks of a proposed link before it is saved: one subject is linked once at a time in the
// classifications of a division, never under itself, never twice in one branch, and never
// shortened past the due date of a definitive bonus.
class Verifica
{
public:
    enum class Modo { Inserimento, Modifica };

    // The link as it would be saved.
    struct Nodo
    {
        qint64 idNodo = 0;  // 0 while inserting
        qint64 idPadre = 0; // 0 for a root
        qint64 codice = 0;  // the subject's code
        QDate dataInizio;
        QDate dataFine;
    };

    struct Esito
    {
        bool valido = false;
        QString righe;                        // why not, each line ending with a line feed
        bool rifiutoPremioDefinitivo = false; // refused only for a definitive bonus
    };

    // The other link an overlap names, as the overlap statement reads it.
    struct Sovrapposizione
    {
        QString anagrafica; // the other link's parent subject; empty when it is a root
        QString ragSoc;
        QString codDistinta;
        QString descDistinta;
        QString codDistintaCapo;
        QString descDistintaCapo;
        QVariant dataI;
        QVariant dataF;
    };

    // The refusal lines, each without its line feed. tipoSoggetto: 0 customers, else suppliers.
    static Sovrapposizione sovrapposizione(const db::Recordset &primo);
    static QString rigaSovrapposizione(int tipoSoggetto, qint64 codice, const Sovrapposizione &altro);
    static QString rigaUgualeAlPadre(int tipoSoggetto, qint64 codice);
    static QString rigaGiaFiglio(int tipoSoggetto, qint64 codice);
    static QString rigaGiaPadre(int tipoSoggetto, qint64 codice);

    Verifica(FormFrame &form, Albero &albero, ControlliLegami &legami);

    Esito VerificaNodo(Modo modo, const Nodo &nodo);
    // The subject against the focused node's subtree and ancestors; a refusal adds its line.
    bool VerificaRicorsivi(qint64 codice, QString &righe);

private:
    static QString soggetto(int tipoSoggetto, qint64 codice);

    FormFrame &m_form;
    Albero &m_albero;
    ControlliLegami &m_legami;
};

} // namespace distinta
