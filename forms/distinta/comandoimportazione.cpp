#include "forms/distinta/comandoimportazione.h"

#include "forms/distinta/albero.h"
#include "forms/distinta/parametrimodulo.h"
#include "forms/distinta/resocontoimportazione.h"
#include "forms/distinta/selettore.h"
#include "frame/formframe.h"
#include "frame/operazionestorico.h"
#include "framework/globalservices.h"
#include "framework/import/importfile.h"
#include "framework/import/importfileerror.h"
#include "framework/workprogress.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QPushButton>
#include <QStandardPaths>

namespace distinta {

namespace {

using Esito = PianoImportazione::Esito;

const QString procedureImporta = QStringLiteral("CMD_IMPORTA_Click");
const QString procedureApplica = QStringLiteral("CMD_APPLICA_Click");

QStringList esiti(const PianoImportazione &piano)
{
    QStringList testi;
    for (const PianoImportazione::Voce &voce : piano.voci)
        testi << PianoImportazione::testoEsito(voce);
    return testi;
}

} // namespace

ComandoImportazione::ComandoImportazione(FormFrame &form, Albero &albero, Selettore &selettore,
                                         const ParametriModulo &parametri)
    : m_form(form)
    , m_albero(albero)
    , m_selettore(selettore)
    , m_parametri(parametri)
    , CMD_IMPORTA(new QPushButton(QStringLiteral("Importa")))
{
    CMD_IMPORTA->setObjectName(QStringLiteral("CMD_IMPORTA"));
    CMD_IMPORTA->setToolTip(QStringLiteral("Importa nella distinta un file Excel o CSV, dopo averne mostrato la "
                                           "prova riga per riga (Alt+K)"));
    connect(CMD_IMPORTA, &QPushButton::clicked, this, &ComandoImportazione::CMD_IMPORTA_Click);
}

ContestoImportazione ComandoImportazione::contesto() const
{
    ContestoImportazione contesto;
    contesto.ditta = m_form.companyCode();
    contesto.tipoSoggetto = m_albero.tipoSoggetto();
    contesto.divisione = m_albero.divisione();
    contesto.idTipo = m_albero.idTipo();
    contesto.codiceTipo = m_selettore.codiceSelezionato();
    contesto.descrizioneTipo = m_selettore.descrizioneSelezionata();
    contesto.statoLegame = m_parametri.valori().statoLegame;
    contesto.regolaFatturazione = m_parametri.valori().tipoCaricaFatt;
    if (const fw::GlobalServices *services = m_form.globals()) {
        contesto.gruppo = services->userGroup();
        contesto.utente = services->user();
    }
    contesto.oggi = QDate::currentDate();
    return contesto;
}

void ComandoImportazione::CMD_IMPORTA_Click()
{
    if (!m_selettore.distintaScelta() || !m_form.connection())
        return;
    const QString percorso = QFileDialog::getOpenFileName(
        &m_form, QStringLiteral("Importa nella distinta"),
        QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation),
        QStringLiteral("Excel o CSV (*.xlsx *.csv);;Tutti i file (*)"));
    if (!percorso.isEmpty())
        provaFile(percorso);
}

std::optional<fw::ImportedTable> ComandoImportazione::leggiFile(const QString &percorso)
{
    try {
        return fw::readImportFile(percorso);
    } catch (const fw::ImportFileError &error) {
        m_form.avviso(error.message());
        return std::nullopt;
    }
}

std::optional<PianoImportazione> ComandoImportazione::prova(ImportazioneDistinta &importazione,
                                                            const QString &procedura, const fw::ImportedTable &tabella)
{
    fw::WorkProgress avanzamento(&m_form, QStringLiteral("Prova dell'importazione"), int(tabella.rows.size()), true);
    avanzamento.showCounts();
    std::optional<PianoImportazione> piano;
    QString errore;
    if (!m_form.step(procedura, [&] {
            piano = importazione.prova(tabella, errore, [&](int fatti, int) { return avanzamento.advance(fatti); });
        }))
        return std::nullopt;
    if (!errore.isEmpty()) {
        m_form.avviso(errore);
        return std::nullopt;
    }
    return piano;
}

bool ComandoImportazione::provaFile(const QString &percorso)
{
    std::optional<fw::ImportedTable> tabella = leggiFile(percorso);
    if (!tabella)
        return false;
    ImportazioneDistinta importazione(m_form.connection(), contesto());
    const std::optional<PianoImportazione> piano = prova(importazione, procedureImporta, *tabella);
    if (!piano)
        return false;
    m_file = percorso;
    m_tabella = std::move(*tabella);
    m_contesto = importazione.contesto();
    if (m_finestra)
        m_finestra->close();
    m_finestra = new FinestraImportazione(m_form, percorso, m_selettore.testoSelezionato());
    connect(m_finestra, &FinestraImportazione::applicaRichiesta, this, &ComandoImportazione::CMD_APPLICA_Click);
    m_finestra->mostra(*piano);
    m_finestra->show();
    return true;
}

ComandoImportazione::Scrittura ComandoImportazione::scrivi(const QString &procedura,
                                                           const ContestoImportazione &contesto,
                                                           const fw::ImportedTable &tabella,
                                                           const PianoImportazione *atteso, PianoImportazione &piano)
{
    ImportazioneDistinta importazione(m_form.connection(), contesto);
    // The checks run again inside the operation: nobody can write between them and the rows.
    OperazioneStorico operazione(m_form, procedura, QStringLiteral("Importazione"), contesto.idTipo,
                                 QFileInfo(m_file).fileName());
    if (!operazione.inizia())
        return Scrittura::NonScritta;
    std::optional<PianoImportazione> trovato = prova(importazione, procedura, tabella);
    if (!trovato) {
        operazione.annulla();
        return Scrittura::NonScritta;
    }
    piano = std::move(*trovato);
    if (atteso && esiti(*atteso) != esiti(piano)) {
        operazione.annulla();
        return Scrittura::Cambiata;
    }
    const int totale = piano.quante(Esito::DaInserire) + piano.quante(Esito::DaAggiornare);
    fw::WorkProgress avanzamento(&m_form, QStringLiteral("Importazione nella distinta"), totale, true);
    avanzamento.showCounts();
    bool scritta = false;
    m_form.step(procedura, [&] {
        scritta = importazione.applica(
            piano, [&](const std::function<void()> &riga) { return m_form.step(procedura, riga); },
            [&](int fatti) { return avanzamento.advance(fatti); });
    });
    if (!scritta) {
        operazione.annulla();
        return Scrittura::NonScritta;
    }
    return operazione.fine() ? Scrittura::Scritta : Scrittura::NonScritta;
}

bool ComandoImportazione::CMD_APPLICA_Click()
{
    if (!m_finestra || !m_form.connection())
        return false;
    const PianoImportazione mostrato = m_finestra->piano();
    PianoImportazione piano;
    const Scrittura esito = scrivi(procedureApplica, m_contesto, m_tabella, &mostrato, piano);
    if (esito == Scrittura::Cambiata) {
        m_finestra->mostra(piano);
        m_form.avviso(QStringLiteral("La distinta è cambiata dopo la prova e l'esito di alcune righe non è più lo "
                                     "stesso: nulla è stato scritto. Controllare il nuovo esito e premere di nuovo "
                                     "Applica."));
        return false;
    }
    if (esito == Scrittura::NonScritta) {
        m_form.mostraInBarraDiStato(QStringLiteral("Importazione non eseguita: la distinta non è stata modificata."));
        return false;
    }
    m_finestra->applicata();
    emit distintaModificata();
    m_form.mostraInBarraDiStato(QStringLiteral("Importazione eseguita. ") + ResocontoImportazione::riepilogo(piano));
    return true;
}

int ComandoImportazione::importaSenzaFinestra(const QString &percorso, bool soloProva, const QString &resoconto,
                                              fw::ExportFile::Format formato)
{
    const QString problema = fw::ExportFile::problem(resoconto);
    if (!problema.isEmpty()) {
        m_form.avviso(problema);
        return 1;
    }
    std::optional<fw::ImportedTable> tabella = leggiFile(percorso);
    if (!tabella)
        return 1;
    m_file = percorso;
    PianoImportazione piano;
    if (soloProva) {
        ImportazioneDistinta importazione(m_form.connection(), contesto());
        std::optional<PianoImportazione> trovato = prova(importazione, procedureImporta, *tabella);
        if (!trovato)
            return 1;
        piano = std::move(*trovato);
    } else if (scrivi(procedureApplica, contesto(), *tabella, nullptr, piano) != Scrittura::Scritta) {
        return 1;
    }
    if (!m_form.step(QStringLiteral("CMD_SALVAIMPORTA_Click"), [&] {
            ResocontoImportazione::esporta(piano, resoconto, formato, QStringLiteral("Importazione"));
        }))
        return 1;
    return piano.quante(Esito::Rifiutato) + piano.quante(Esito::Errore) > 0 ? 4 : 0;
}

} // namespace distinta
