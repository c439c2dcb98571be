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
QString distinta(const QVariant &codice, const QVariant &descrizione)
{
    const QString description = MODGD_DISTINTA::NvlStringa(descrizione);
    return MODGD_DISTINTA::NvlStringa(codice)
        + (description.isEmpty() ? QString() : QStringLiteral(" - ") + description);
}

} // namespace

Verifica::Verifica(FormFrame &form, Albero &albero, ControlliLegami &legami)
    : m_form(form)
    , m_albero(albero)
    , m_legami(legami)
{ }

QString Verifica::soggetto(qint64 codice) const
{
    return (m_albero.tipoSoggetto() != 0 ? QStringLiteral("Fornitore ") : QStringLiteral("Cliente "))
        + QString::number(codice);
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
            esito.righe = soggetto(nodo.codice)
                + QStringLiteral(" uguale al nodo padre, non è possibile salvare la struttura.\n");
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

    // Only the link of the lowest classification type is named.
    QString riga = soggetto(nodo.codice) + QStringLiteral(" già legato alla distinta ");
    FormFrame::quietly([&] {
        sovrapposti->moveFirst();
        const db::Recordset &primo = *sovrapposti;
        const QString periodo = QStringLiteral(" nel periodo dal ") + testoData(primo.value(QStringLiteral("DataI")))
            + QStringLiteral(" al ") + testoData(primo.value(QStringLiteral("DataF")));
        if (MODGD_DISTINTA::NvlStringa(primo.value(QStringLiteral("Anagrafica"))).isEmpty()) {
            // A root's parent is nobody: the parent's type is empty too, and so is the code shown.
            riga += distinta(primo.value(QStringLiteral("CodDistintaCapo")),
                             primo.value(QStringLiteral("DescDistintaCapo")))
                + QStringLiteral(": Nodo capostipite") + periodo;
        } else {
            riga += distinta(primo.value(QStringLiteral("CodDistinta")), primo.value(QStringLiteral("DescDistinta")))
                + QStringLiteral(": Nodo padre ")
                + MODGD_DISTINTA::NvlStringa(primo.value(QStringLiteral("Anagrafica"))) + QStringLiteral(" - ")
                + primo.value(QStringLiteral("RagSoc")).toString() + periodo;
        }
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
                righe += soggetto(codice) + QStringLiteral(" nodo è già un nodo figlio nella struttura.\n");
                valido = false;
                return;
            }
        }
        if (livello < 2)
            return;
        for (fw::TreeListNode node = focalizzato.parent(); node.isValid() && node.level() < livello;
             node = node.parent()) {
            if (stesso(node)) {
                righe += soggetto(codice) + QStringLiteral(" nodo è già un nodo padre nella struttura.\n");
                valido = false;
                return;
            }
        }
    });
    return valido;
}

} // namespace distinta
