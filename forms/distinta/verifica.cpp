#include "forms/distinta/verifica.h"

#include "data/modgd_distinta.h"
#include "data/nodistatements.h"
#include "data/sqltext.h"
#include "forms/distinta/albero.h"
#include "forms/distinta/controllilegami.h"
#include "frame/formframe.h"
#include "framework/treelist/treelist.h"

namespace distinta {

namespace {

QString testoData(const QVariant &value)
{
    return value.isNull() ? QString() : sqltext::dayMonthYear(value.toDateTime());
}

// "CODE - description", or the code alone when there is no description.
QString distinta(const QString &codice, const QString &descrizione)
{
    return codice + (descrizione.isEmpty() ? QString() : QStringLiteral(" - ") + descrizione);
}

} // namespace

Verifica::Verifica(FormFrame &form, Albero &albero, ControlliLegami &legami)
    : m_form(form)
    , m_albero(albero)
    , m_legami(legami)
{ }

QString Verifica::soggetto(int tipoSoggetto, qint64 codice)
{
    return (tipoSoggetto != 0 ? QStringLiteral("Fornitore ") : QStringLiteral("Cliente ")) + QString::number(codice);
}

Verifica::Sovrapposizione Verifica::sovrapposizione(const db::Recordset &primo)
{
    Sovrapposizione altro;
    altro.anagrafica = MODGD_DISTINTA::NvlStringa(primo.value(QStringLiteral("Anagrafica")));
    altro.ragSoc = primo.value(QStringLiteral("RagSoc")).toString();
    altro.codDistinta = MODGD_DISTINTA::NvlStringa(primo.value(QStringLiteral("CodDistinta")));
    altro.descDistinta = MODGD_DISTINTA::NvlStringa(primo.value(QStringLiteral("DescDistinta")));
    altro.codDistintaCapo = MODGD_DISTINTA::NvlStringa(primo.value(QStringLiteral("CodDistintaCapo")));
    altro.descDistintaCapo = MODGD_DISTINTA::NvlStringa(primo.value(QStringLiteral("DescDistintaCapo")));
    altro.dataI = primo.value(QStringLiteral("DataI"));
    altro.dataF = primo.value(QStringLiteral("DataF"));
    return altro;
}

// Only the other link's own classification is named, or for a root its parent's: none.
QString Verifica::rigaSovrapposizione(int tipoSoggetto, qint64 codice, const Sovrapposizione &altro)
{
    const QString periodo = QStringLiteral(" nel periodo dal ") + testoData(altro.dataI) + QStringLiteral(" al ")
        + testoData(altro.dataF);
    const QString riga = soggetto(tipoSoggetto, codice) + QStringLiteral(" già legato alla distinta ");
    if (altro.anagrafica.isEmpty())
        return riga + distinta(altro.codDistintaCapo, altro.descDistintaCapo) + QStringLiteral(": Nodo capostipite")
            + periodo;
    return riga + distinta(altro.codDistinta, altro.descDistinta) + QStringLiteral(": Nodo padre ") + altro.anagrafica
        + QStringLiteral(" - ") + altro.ragSoc + periodo;
}

QString Verifica::rigaUgualeAlPadre(int tipoSoggetto, qint64 codice)
{
    return soggetto(tipoSoggetto, codice)
        + QStringLiteral(" uguale al nodo padre, non è possibile salvare la struttura.");
}

QString Verifica::rigaGiaFiglio(int tipoSoggetto, qint64 codice)
{
    return soggetto(tipoSoggetto, codice) + QStringLiteral(" nodo è già un nodo figlio nella struttura.");
}

QString Verifica::rigaGiaPadre(int tipoSoggetto, qint64 codice)
{
    return soggetto(tipoSoggetto, codice) + QStringLiteral(" nodo è già un nodo padre nella struttura.");
}

// Runs with errors ignored statement by statement: a statement that fails is skipped, and the
// result stays false unless an accepting path is reached.
Verifica::Esito Verifica::VerificaNodo(Modo modo, const Nodo &nodo)
{
    const bool inserimento = modo == Modo::Inserimento;
    const db::ConnectionPtr connection = m_form.connection();
    Esito esito;
    qint64 codicePadre = 0;

    FormFrame::quietly([&] {
        const db::RecordsetPtr padre = connection->openRecordset(
            nodistatements::parentQuery(m_form.companyCode(), nodo.idPadre));
        if (!padre->isEmpty())
            codicePadre = qint64(
                MODGD_DISTINTA::NvlNumero(padre->value(QStringLiteral("GD02_CLIFOR_CG44"))).toDouble());
    });

    nodistatements::Collegamento link;
    link.company = m_form.companyCode();
    link.subjectCode = nodo.codice;
    link.subjectKind = m_albero.tipoSoggetto();
    link.division = m_albero.divisione();
    if (!inserimento)
        link.excludedNodeId = nodo.idNodo;
    link.start = nodo.dataInizio;
    link.end = nodo.dataFine;

    // A failing overlap statement is skipped like any other here: the link is refused without a
    // line of its own (the caller counts it among those not saved) and the trace keeps the error.
    db::RecordsetPtr sovrapposti;
    FormFrame::quietly([&] { sovrapposti = connection->openRecordset(nodistatements::overlapQuery(link)); });
    if (!sovrapposti) {
        connection->clearErrors();
        return esito;
    }

    if (sovrapposti->isEmpty()) {
        if (inserimento && nodo.codice == codicePadre) {
            esito.righe = rigaUgualeAlPadre(m_albero.tipoSoggetto(), nodo.codice) + QLatin1Char('\n');
            return esito;
        }
        if (inserimento && !VerificaRicorsivi(nodo.codice, esito.righe))
            return esito;
        // While inserting the node has no id yet: a bonus can never refuse an insertion.
        const bool bloccato = m_legami.PremioDefinitivo(nodo.idNodo, nodo.dataFine);
        esito.rifiutoPremioDefinitivo = !inserimento && bloccato;
        esito.valido = inserimento || !bloccato;
        return esito;
    }

    // Only the link of the lowest classification type is named; a value that cannot be read
    // leaves the line as far as it got.
    QString riga = soggetto(m_albero.tipoSoggetto(), nodo.codice) + QStringLiteral(" già legato alla distinta ");
    FormFrame::quietly([&] {
        sovrapposti->moveFirst();
        riga = rigaSovrapposizione(m_albero.tipoSoggetto(), nodo.codice, sovrapposizione(*sovrapposti));
    });
    esito.righe = riga + QLatin1Char('\n');
    return esito;
}

// Works on the tree as shown: the focused node's subtree, then (from level 2 down only) its
// ancestors. The focused node itself is the parent check of VerificaNodo.
bool Verifica::VerificaRicorsivi(qint64 codice, QString &righe)
{
    bool valido = true;
    m_form.step(QStringLiteral("VerificaRicorsivi"), [&] {
        const fw::TreeListNode focalizzato = m_albero.widget()->focusedNode();
        const db::RecordsetPtr nodi = m_albero.nodi();
        if (!nodi || nodi->isEmpty() || !focalizzato.isValid())
            return;
        const int livello = focalizzato.level();
        const QString colonna = QStringLiteral("trGD02_CLIFOR_CG44");
        const auto stesso = [&](const fw::TreeListNode &node) {
            bool ok = false;
            const qint64 codiceNodo = node.value(colonna).toLongLong(&ok);
            return ok && codiceNodo == codice;
        };

        for (fw::TreeListNode node = focalizzato.next(); node.isValid() && node.level() > livello; node = node.next()) {
            if (stesso(node)) {
                righe += rigaGiaFiglio(m_albero.tipoSoggetto(), codice) + QLatin1Char('\n');
                valido = false;
                return;
            }
        }
        if (livello < 2)
            return;
        for (fw::TreeListNode node = focalizzato.parent(); node.isValid() && node.level() < livello;
             node = node.parent()) {
            if (stesso(node)) {
                righe += rigaGiaPadre(m_albero.tipoSoggetto(), codice) + QLatin1Char('\n');
                valido = false;
                return;
            }
        }
    });
    return valido;
}

} // namespace distinta
