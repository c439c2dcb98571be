// Two clerks may edit the same classification: the editor keeps no lock, so every change it
// writes is checked against what was read, and a refused change is followed by a fresh read of
// the row, so that the user sees the other clerk's values before trying again.
#include "forms/distinta/frmgd_distinta.h"

#include "framework/logservice.h"
#include "framework/treelist/treelist.h"

namespace {

const QString nodoEliminatoAltrove =
    QStringLiteral("Il nodo è stato eliminato da un altro utente dopo la lettura: la distinta viene ricaricata.");

} // namespace

int FRMGD_DISTINTA::domanda(const QString &testo)
{
    fw::LogService *log = logService();
    return log ? log->showMessage(testo, windowTitle(), fw::MessageStyle::YesNoWarning) : fw::Answer::No;
}

void FRMGD_DISTINTA::avviso(const QString &testo)
{
    if (fw::LogService *log = logService())
        log->showMessage(testo, windowTitle(), fw::MessageStyle::Warning);
}

// Reads the focused node's row again. True (and the user told) when another clerk changed it
// since it was read, or removed it; the tree then shows what the database holds. With
// soloSeEliminato a change is taken in silently and only a removal stops the caller.
bool FRMGD_DISTINTA::rigaModificataAltrove(const QString &procedure, bool soloSeEliminato)
{
    db::Recordset::RowState stato = db::Recordset::RowState::Unchanged;
    if (!step(procedure, [&] { stato = m_nodi->resync(); }))
        return true;
    switch (stato) {
    case db::Recordset::RowState::Unchanged:
        return false;
    case db::Recordset::RowState::Changed:
        TVW_DISTINTA->refresh();
        if (soloSeEliminato)
            return false;
        avviso(QStringLiteral("Il nodo è stato modificato da un altro utente dopo la lettura: "
                              "i suoi dati sono stati riletti, l'operazione non è stata eseguita."));
        return true;
    case db::Recordset::RowState::Gone:
        avviso(nodoEliminatoAltrove);
        CaricaDistinta();
        return true;
    }
    return true;
}

// A write through the tree was refused. Another clerk's change: the row is read again and the
// user told; anything else is a failure for the error handler.
void FRMGD_DISTINTA::rileggiNodoInConflitto(const db::DatabaseError &error)
{
    if (!error.isStaleRow()) {
        ErrorHandler(QStringLiteral("TVW_DISTINTA_OnEdited"), error.message(), error.errors());
        return;
    }
    connection()->clearErrors();
    avviso(error.message());
    if (!m_nodi || m_nodi->currentRow() < 0)
        return;
    db::Recordset::RowState stato = db::Recordset::RowState::Unchanged;
    if (!step(QStringLiteral("TVW_DISTINTA_OnEdited"), [&] { stato = m_nodi->resync(); }))
        return;
    if (stato == db::Recordset::RowState::Gone) {
        avviso(nodoEliminatoAltrove);
        CaricaDistinta();
        return;
    }
    caricaTestiDisegno(*m_nodi);
    TVW_DISTINTA->refresh();
}
