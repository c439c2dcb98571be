#include "forms/distinta/parti.h"

#include "forms/distinta/frmgd_distinta.h"

namespace distinta {

Parti::Parti(FRMGD_DISTINTA &form, QTabWidget *gestione)
    : selettore(form)
    , albero(form, selettore)
    , parametri(form)
    , legami(form, albero)
    , verifica(form, albero, legami)
    , anagrafiche(form, selettore, albero, gestione)
    , ricerca(form)
    , ricercaAlbero(form, albero)
    , priorita(form, albero)
    , dettagli(form, albero, selettore, legami, parametri, priorita)
    , stato(form, albero)
    , gestioni(form, selettore)
    , menu(form, albero, stato, gestioni)
    , modifica(form, albero, verifica)
    , inserimento(form, albero, anagrafiche, verifica, parametri)
    , eliminazione(form, albero, legami, anagrafiche)
    , stampa(form, albero, selettore)
    , esportazione(form, albero, selettore)
    , importazione(form, albero, selettore, parametri)
    , spostamento(form, albero)
    , aspetto(form, albero)
    , annullamento(form, albero, verifica, legami)
    , storico(form, albero, selettore, ricercaAlbero, annullamento)
    , controllo(form, selettore)
    , doveUsato(form)
{
    albero.setControlliLegati(dettagli.promozioni().controlliLegati());
}

} // namespace distinta
