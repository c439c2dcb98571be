#pragma once

#include "forms/distinta/albero.h"
#include "forms/distinta/alladata.h"
#include "forms/distinta/annullamento.h"
#include "forms/distinta/comandodoveusato.h"
#include "forms/distinta/aspetto.h"
#include "forms/distinta/controllilegami.h"
#include "forms/distinta/comandoimportazione.h"
#include "forms/distinta/controllodistinte.h"
#include "forms/distinta/eliminazione.h"
#include "forms/distinta/esportazione.h"
#include "forms/distinta/gestioni.h"
#include "forms/distinta/inserimento.h"
#include "forms/distinta/livelli.h"
#include "forms/distinta/menunodo.h"
#include "forms/distinta/modificanodo.h"
#include "forms/distinta/paginaanagrafiche.h"
#include "forms/distinta/paginaricerca.h"
#include "forms/distinta/paginedettaglio.h"
#include "forms/distinta/parametrimodulo.h"
#include "forms/distinta/priorita.h"
#include "forms/distinta/ricercaalbero.h"
#include "forms/distinta/selettore.h"
#include "forms/distinta/spostamento.h"
#include "forms/distinta/stampa.h"
#include "forms/distinta/statolegame.h"
#include "forms/distinta/storicodistinta.h"
#include "forms/distinta/verifica.h"

class FRMGD_DISTINTA;
class QTabWidget;

namespace distinta {

// The parts of the tree editor, each with its own controls, state and statements, built in the
// order in which they lean on each other (and released in the reverse order).
struct Parti
{
    // gestione: the management panel, whose pages the parts that show there look at.
    Parti(FRMGD_DISTINTA &form, QTabWidget *gestione);

    Selettore selettore;
    Albero albero;
    ParametriModulo parametri;
    ControlliLegami legami;
    Verifica verifica;
    PaginaAnagrafiche anagrafiche;
    PaginaRicerca ricerca;
    RicercaAlbero ricercaAlbero;
    Priorita priorita;
    PagineDettaglio dettagli;
    StatoLegame stato;
    Gestioni gestioni;
    MenuNodo menu;
    ModificaNodo modifica;
    Inserimento inserimento;
    Eliminazione eliminazione;
    Stampa stampa;
    Esportazione esportazione;
    ComandoImportazione importazione;
    Spostamento spostamento;
    Aspetto aspetto;
    Annullamento annullamento;
    StoricoDistinta storico;
    ControlloDistinte controllo;
    ComandoDoveUsato doveUsato;
};

} // namespace distinta
