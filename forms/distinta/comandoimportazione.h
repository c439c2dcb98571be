#pragma once

#include "forms/distinta/contestoimportazione.h"
#include "forms/distinta/finestraimportazione.h"
#include "forms/distinta/importazionedistinta.h"
#include "framework/import/importedtable.h"

#include <QObject>
#include <QPointer>
#include <optional>

class FormFrame;
class QPushButton;

namespace distinta {

class Albero;
class ParametriModulo;
class Selettore;

// CMD_IMPORTA "Importa": a spreadsheet read into the open classification. The dry run comes
// first, always, in FRMGD_IMPORTA; "Applica" there writes the accepted rows as one operation of
// the journal, after checking them again: what was shown is what is written, or nothing is.
class ComandoImportazione : public QObject
{
    Q_OBJECT

public:
    ComandoImportazione(FormFrame &form, Albero &albero, Selettore &selettore, const ParametriModulo &parametri);

    QPushButton *pulsante() const { return CMD_IMPORTA; }
    FinestraImportazione *finestra() const { return m_finestra; }

    void CMD_IMPORTA_Click();
    // The dry run of a file, in the report window; false (the reason told) when it cannot run.
    bool provaFile(const QString &percorso);
    // Writes what the report shows as accepted; true when it was written.
    bool CMD_APPLICA_Click();

    // The classification open in the editor, as an import writes into it.
    ContestoImportazione contesto() const;

    // Without a window: the dry run of a file, then (unless soloProva) its accepted rows
    // written, and the report to a file. 0: every row applied or applicable; 4: some refused;
    // 1: nothing done, the reason told.
    int importaSenzaFinestra(const QString &percorso, bool soloProva, const QString &resoconto,
                             fw::ExportFile::Format formato);

signals:
    // Rows were written: the tree and the subject list are to be read again.
    void distintaModificata();

private:
    enum class Scrittura { Scritta, Cambiata, NonScritta };

    // The file read; none when it cannot be (the reason told).
    std::optional<fw::ImportedTable> leggiFile(const QString &percorso);
    // The fate of each row of the table; none when stopped or failed (then told).
    std::optional<PianoImportazione> prova(ImportazioneDistinta &importazione, const QString &procedura,
                                           const fw::ImportedTable &tabella);
    // Within one operation of the journal: the rows checked again, and the accepted ones written
    // when their fates are still those of atteso (without one: whatever they are). piano: the
    // fates found.
    Scrittura scrivi(const QString &procedura, const ContestoImportazione &contesto, const fw::ImportedTable &tabella,
                     const PianoImportazione *atteso, PianoImportazione &piano);

    FormFrame &m_form;
    Albero &m_albero;
    Selettore &m_selettore;
    const ParametriModulo &m_parametri;
    QPushButton *CMD_IMPORTA;
    QPointer<FinestraImportazione> m_finestra;
    // The dry run shown: its file, its rows and the classification it was tried on, which
    // "Applica" writes into whatever the editor shows meanwhile.
    QString m_file;
    fw::ImportedTable m_tabella;
    ContestoImportazione m_contesto;
};

} // namespace distinta
