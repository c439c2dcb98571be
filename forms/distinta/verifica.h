#pragma once

#include <QDate>
#include <QString>

class FormFrame;

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

    Verifica(FormFrame &form, Albero &albero, ControlliLegami &legami);

    Esito VerificaNodo(Modo modo, const Nodo &nodo);
    // The subject against the focused node's subtree and ancestors; a refusal adds its line.
    bool VerificaRicorsivi(qint64 codice, QString &righe);

private:
    QString soggetto(qint64 codice) const;

    FormFrame &m_form;
    Albero &m_albero;
    ControlliLegami &m_legami;
};

} // namespace distinta
