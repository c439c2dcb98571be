#pragma once

#include "data/storicostatements.h"

#include <QHash>
#include <QJsonObject>
#include <QObject>
#include <QStringList>
#include <optional>

class FormFrame;
class QPushButton;

namespace distinta {

class Albero;
class ControlliLegami;
class Verifica;

// Undo and redo through the journal. An undo writes back the rows an operation changed as they
// were before it, as a new operation; a redo does the same to an undo. Both run in one
// transaction through the checks the forward direction has: a row changed since by anyone is
// not overwritten, a subject brought back must not overlap its other links, and nodes that a
// definitive bonus hangs on are not removed. A refusal changes nothing.
class Annullamento : public QObject
{
    Q_OBJECT

public:
    Annullamento(FormFrame &form, Albero &albero, Verifica &verifica, ControlliLegami &legami);

    QPushButton *annulla() const { return CMD_ANNULLA; }
    QPushButton *ripeti() const { return CMD_RIPETI; }

    // The user's own last operation on the open classification, undone; the undo, redone.
    void CMD_ANNULLA_Click();
    void CMD_RIPETI_Click();
    // Reverses one operation (an action, a redo: undone; an undo: redone). True when done.
    bool inverti(qint64 idOperazione);

    // Enables the two buttons for what the journal holds now.
    void aggiornaComandi();

signals:
    void distintaCambiata();

private:
    // One row of a table as the operation left it and as it found it.
    struct Cambio
    {
        QString tabella;
        qint64 chiave = 0;
        std::optional<QJsonObject> prima; // none: the operation inserted it
        std::optional<QJsonObject> dopo;  // none: the operation removed it
    };
    struct Operazione
    {
        QString nome;
        QString descrizione;
        int tipo = 0;
        bool invertita = false;
        QList<Cambio> cambi; // in the order the operation first touched them
    };

    std::optional<Operazione> leggiOperazione(qint64 idOperazione);
    std::optional<qint64> ultimaAnnullabile();
    std::optional<qint64> ultimaRipetibile();
    // Lines naming the rows changed since the operation; empty when none.
    QString righeCambiate(const QList<Cambio> &cambi);
    // The editor's checks on what the reversal would write; the refusal's text, empty when none.
    QString verificaLegami(const QList<Cambio> &cambi);
    void scrivi(const QList<Cambio> &cambi);
    static QString descriviRiga(const QString &tabella, qint64 chiave, const QJsonObject &valori);

    FormFrame &m_form;
    Albero &m_albero;
    Verifica &m_verifica;
    ControlliLegami &m_legami;
    QPushButton *CMD_ANNULLA;
    QPushButton *CMD_RIPETI;
};

} // namespace distinta
