// The checks of a proposed link before it is saved: one subject is linked once at a time in the
// classifications of a division, never under itself, never twice in one branch, and never
// shortened past the due date of a definitive bonus.
#include "forms/distinta/frmgd_distinta.h"

#include "data/modgd_distinta.h"
#include "data/nodistatements.h"
#include "data/sqltext.h"
#include "framework/treelist/treelist.h"

namespace {

QString soggetto(int tipoSoggetto, qint64 codice)
{
    return (tipoSoggetto != 0 ? QStringLiteral("Fornitore ") : QStringLiteral("Cliente ")) + QString::number(codice);
}

QString testoData(const QVariant &value)
{
    return value.isNull() ? QString() : sqltext::dayMonthYear(value.toDateTime());
}

// "CODE - description", or the code alone when there is no description.
QString distinta(const QVariant &codice, const QVariant &descrizione)
{
    const QString description = MODGD_DISTINTA::NvlStringa(descrizione);
    return MODGD_DISTINTA::NvlStringa(codice) + (description.isEmpty() ? QString() : QStringLiteral(" - ") + description);
}

} // namespace

// A statement that fails is skipped: the link is then refused with what the database said, so
// that no subject is left out without a word.
bool FRMGD_DISTINTA::VerificaNodo(const QString &modo)
{
    const bool inserimento = modo == QLatin1String("Insert");
    m_rifiutoPremioDefinitivo = false;
    m_codicePadre = 0;

    quietly([&] {
        const db::RecordsetPtr padre = connection()->openRecordset(
            nodistatements::parentQuery(companyCode(), m_verifica.idPadre));
        if (!padre->isEmpty())
            m_codicePadre = qint64(MODGD_DISTINTA::NvlNumero(padre->value(QStringLiteral("GD02_CLIFOR_CG44"))).toDouble());
    });

    nodistatements::Collegamento link;
    link.company = companyCode();
    link.subjectCode = m_verifica.codice;
    link.subjectKind = m_tipoSoggetto;
    link.division = m_divisione;
    if (!inserimento)
        link.excludedNodeId = m_verifica.idNodo;
    link.start = m_verifica.dataInizio;
    link.end = m_verifica.dataFine;

    db::RecordsetPtr sovrapposti;
    QString errore;
    try {
        sovrapposti = connection()->openRecordset(nodistatements::overlapQuery(link));
    } catch (const db::DatabaseError &error) {
        errore = error.message();
        connection()->clearErrors();
    }
    if (!sovrapposti) {
        m_nonImportate += soggetto(m_tipoSoggetto, m_verifica.codice) + QStringLiteral(" non verificato: ") + errore
                          + QLatin1Char('\n');
        return false;
    }

    if (sovrapposti->isEmpty()) {
        if (inserimento && m_verifica.codice == m_codicePadre) {
            m_nonImportate += soggetto(m_tipoSoggetto, m_verifica.codice)
                              + QStringLiteral(" uguale al nodo padre, non è possibile salvare la struttura.\n");
            return false;
        }
        if (inserimento && !VerificaRicorsivi())
            return false;
        // While inserting the node has no id yet: a bonus can never refuse an insertion.
        const bool bloccato = PremioDefinitivo(m_verifica.idNodo, m_verifica.dataFine);
        m_rifiutoPremioDefinitivo = !inserimento && bloccato;
        return inserimento || !bloccato;
    }

    // Only the link of the lowest classification type is named.
    QString riga = soggetto(m_tipoSoggetto, m_verifica.codice) + QStringLiteral(" già legato alla distinta ");
    quietly([&] {
        sovrapposti->moveFirst();
        const db::Recordset &primo = *sovrapposti;
        const QString periodo = QStringLiteral(" nel periodo dal ") + testoData(primo.value(QStringLiteral("DataI")))
                                + QStringLiteral(" al ") + testoData(primo.value(QStringLiteral("DataF")));
        if (MODGD_DISTINTA::NvlStringa(primo.value(QStringLiteral("Anagrafica"))).isEmpty()) {
            // A root's parent is nobody: the parent's type is empty too, and so is the code shown.
            riga += distinta(primo.value(QStringLiteral("CodDistintaCapo")), primo.value(QStringLiteral("DescDistintaCapo")))
                    + QStringLiteral(": Nodo capostipite") + periodo;
        } else {
            riga += distinta(primo.value(QStringLiteral("CodDistinta")), primo.value(QStringLiteral("DescDistinta")))
                    + QStringLiteral(": Nodo padre ") + MODGD_DISTINTA::NvlStringa(primo.value(QStringLiteral("Anagrafica")))
                    + QStringLiteral(" - ") + primo.value(QStringLiteral("RagSoc")).toString() + periodo;
        }
    });
    m_nonImportate += riga + QLatin1Char('\n');
    return false;
}

// Works on the tree as shown: the focused node's subtree, then (from level 2 down only) its
// ancestors. The focused node itself is the parent check of VerificaNodo.
bool FRMGD_DISTINTA::VerificaRicorsivi()
{
    bool valido = true;
    step(QStringLiteral("VerificaRicorsivi"), [&] {
        const fw::TreeListNode focalizzato = TVW_DISTINTA->focusedNode();
        if (!m_nodi || m_nodi->isEmpty() || !focalizzato.isValid())
            return;
        const int livello = focalizzato.level();
        const QString colonna = QStringLiteral("trGD02_CLIFOR_CG44");
        const auto stesso = [&](const fw::TreeListNode &node) {
            bool ok = false;
            const qint64 codice = node.value(colonna).toLongLong(&ok);
            return ok && codice == m_verifica.codice;
        };

        for (fw::TreeListNode node = focalizzato.next(); node.isValid() && node.level() > livello; node = node.next()) {
            if (stesso(node)) {
                m_nonImportate += soggetto(m_tipoSoggetto, m_verifica.codice)
                                  + QStringLiteral(" nodo è già un nodo figlio nella struttura.\n");
                valido = false;
                return;
            }
        }
        if (livello < 2)
            return;
        for (fw::TreeListNode node = focalizzato.parent(); node.isValid() && node.level() < livello; node = node.parent()) {
            if (stesso(node)) {
                m_nonImportate += soggetto(m_tipoSoggetto, m_verifica.codice)
                                  + QStringLiteral(" nodo è già un nodo padre nella struttura.\n");
                valido = false;
                return;
            }
        }
    });
    return valido;
}
