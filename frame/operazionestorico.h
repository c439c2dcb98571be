#pragma once

#include "data/storicostatements.h"

#include <QString>
#include <optional>

class FormFrame;

// One action of the user as one operation of the journal. Begun, it holds one write transaction
// on the form's connection and tells the journal's triggers which operation they record into;
// ended, it closes the operation and commits. Every write of the action runs between the two,
// so the action's changes and their journal are committed together, or neither is.
//
// Each form begins its operations after the questions it asks, right before its first write: a
// transaction holds the database's write lock, and no one else should wait on a question. An
// operation begun while another runs on the same connection joins it.
// A database without the journal (not installed yet, or opened read-only) gets the writes as
// before, without a transaction; the user is told once that the history is not kept.
class OperazioneStorico
{
public:
    // name: "Inserimento", "Eliminazione", ...; typeId: the classification written, if any.
    OperazioneStorico(FormFrame &form, QString procedure, QString name, std::optional<qint64> typeId,
                      QString description = {});
    ~OperazioneStorico(); // ends it, as fine() does
    OperazioneStorico(const OperazioneStorico &) = delete;
    OperazioneStorico &operator=(const OperazioneStorico &) = delete;

    // An undo or a redo: the operation it reverses.
    void setReverses(storicostatements::TipoOperazione kind, qint64 operationId);

    // Begins it; a failure goes through the form's error handler. False when the user chose to
    // leave the procedure (nothing was written); true otherwise, journaled or not.
    bool inizia();
    // Begins it for states stored through FormFrame::statiDelFlusso(), when they are written on
    // the form's connection; a host that cannot give them so writes them outside any operation
    // (the journal records them as another program's changes). As inizia() otherwise.
    bool iniziaPerStati();
    // Ends it: what was written stays. A failing commit goes through the error handler and
    // leaves nothing of the operation; false then.
    bool fine();
    // Leaves nothing of what was written since inizia().
    void annulla();

    bool isActive() const { return m_active; }
    std::optional<qint64> id() const { return m_id; }

    // Whether the form's database keeps the journal; the first time it does not for a
    // database, the user is told.
    static bool storicoInstallato(FormFrame &form);

private:
    FormFrame &m_form;
    QString m_procedure;
    storicostatements::Operazione m_operation;
    bool m_active = false;
    std::optional<qint64> m_id;
};
