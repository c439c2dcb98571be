#pragma once

#include "forms/distinta/contestoimportazione.h"
#include "forms/distinta/pianoimportazione.h"
#include "platform/db/connection.h"
#include "platform/db/recordset.h"

#include <functional>
#include <optional>

namespace distinta {

// An import into one classification: the fate of each row of a file worked out against the
// database as it is (the dry run), then the accepted rows written. Writes nothing on its own
// account of transactions: the caller holds the operation of the journal around a write.
class ImportazioneDistinta
{
public:
    // avanza(done, total): false stops the work.
    using Avanzamento = std::function<bool(int, int)>;
    // Runs one row's write; false stops the writing (a failure the user chose not to retry).
    using Scrittura = std::function<bool(const std::function<void()> &)>;

    ImportazioneDistinta(db::ConnectionPtr connection, ContestoImportazione contesto);

    // The file's rows and their fates; none when stopped. A file that cannot be read as an
    // import leaves its reason in errore and no rows. Throws db::DatabaseError.
    std::optional<PianoImportazione> prova(const fw::ImportedTable &tabella, QString &errore,
                                           const Avanzamento &avanza);
    // Writes the rows the last dry run accepted, parents first, each through scrivi; changed
    // rows go through the nodes read by that dry run, with the change stamp. False when stopped
    // or when a write was given up. Throws db::DatabaseError.
    bool applica(const PianoImportazione &piano, const Scrittura &scrivi, const std::function<bool(int)> &avanza);

    const ContestoImportazione &contesto() const { return m_contesto; }

private:
    CatalogoImportazione leggiCatalogo();
    QList<NodoEsistente> leggiNodi();
    void aggiorna(const PianoImportazione::Voce &voce);
    qint64 inserisci(const PianoImportazione::Voce &voce, qint64 idPadre);

    db::ConnectionPtr m_connection;
    ContestoImportazione m_contesto;
    db::RecordsetPtr m_righeNodi;
    QHash<qint64, int> m_rigaDelNodo;
};

} // namespace distinta
