#include "forms/distinta/controllilegami.h"

#include "data/legamistatements.h"
#include "data/numerictext.h"
#include "forms/distinta/albero.h"
#include "frame/formframe.h"

namespace distinta {

ControlliLegami::ControlliLegami(FormFrame &form, Albero &albero)
    : m_form(form)
    , m_albero(albero)
{ }

// The current row of a node recordset as the condition statement reads it. An empty date
// fails the statement, as it does on the server.
legamistatements::NodoCondizioni ControlliLegami::nodoCondizioni(const db::Recordset &nodi)
{
    legamistatements::NodoCondizioni nodo;
    nodo.nodeId = nodi.value(QStringLiteral("GD02_ID")).toLongLong();
    nodo.subjectKind = nodi.value(QStringLiteral("GD02_TIPOCF_CG44")).toInt();
    nodo.subjectCode = nodi.value(QStringLiteral("GD02_CLIFOR_CG44")).toLongLong();
    nodo.start = nodi.value(QStringLiteral("GD02_DATAINIZIOVAL")).toDate();
    nodo.end = nodi.value(QStringLiteral("GD02_DATAFINEVAL")).toDate();
    return nodo;
}

// Under the definitive-bonus check's label, as it has always been reported.
bool ControlliLegami::ContaFigli(qint64 idNodo)
{
    bool haFigli = false;
    m_form.step(QStringLiteral("PremioDefinitivo"), [&] {
        const db::RecordsetPtr conta = m_form.connection()->openRecordset(
            legamistatements::childCountQuery(m_form.companyCode(), idNodo));
        haFigli = !conta->isEmpty() && conta->value(QStringLiteral("NFIGLI")).toLongLong() > 0;
    });
    m_form.connection()->clearErrors();
    return haFigli;
}

bool ControlliLegami::PremioDefinitivo(qint64 idNodo, const std::optional<QDate> &dataFine)
{
    bool trovato = false;
    m_form.step(QStringLiteral("PremioDefinitivo"), [&] {
        const db::RecordsetPtr premi = m_form.connection()->openRecordset(
            legamistatements::definitiveBonusQuery(m_form.companyCode(), idNodo, dataFine));
        trovato = !premi->isEmpty();
    });
    return trovato;
}

QString ControlliLegami::messaggioPremioDefinitivo(bool conDataFine)
{
    return conDataFine
        ? QStringLiteral("La data fine è inferiore alla data scadenza di un premio definitivo")
        : QStringLiteral("La data inizio non può essere modificata perchè è presente un premio definitivo");
}

// A code that is not a number (a node without subject) has no contract to look for.
bool ControlliLegami::LegamiContratto(const QString &codice)
{
    if (!numerictext::isNumeric(codice))
        return false;
    bool legato = false;
    m_form.step(QStringLiteral("LegamiContratto:"), [&] {
        const db::RecordsetPtr contratti = m_form.connection()->openRecordset(
            legamistatements::contractCountQuery(m_form.companyCode(), qint64(codice.trimmed().toDouble())));
        legato = !contratti->isEmpty() && contratti->valueAt(0, 0).toLongLong() > 0;
    });
    return legato;
}

bool ControlliLegami::LegamiPremiPromoAtt()
{
    bool legato = false;
    m_form.step(QStringLiteral("LegamiPremiPromoAtt:"), [&] {
        const QString divisione = m_albero.divisione() ? QString::number(*m_albero.divisione()) : QString();
        legato = m_form.connection()
                     ->openRecordset(legamistatements::conditionsQuery(m_form.companyCode(),
                                                                       nodoCondizioni(*m_albero.nodi()), divisione))
                     ->recordCount()
            >= 1;
    });
    return legato;
}

bool ControlliLegami::LegamiPremiPromoAttFigli(const db::RecordsetPtr &figli)
{
    bool legato = false;
    m_form.step(QStringLiteral("LegamiPremiPromoAttFigli:"), [&] {
        const QString divisione = m_albero.divisione() ? QString::number(*m_albero.divisione()) : QString();
        for (figli->moveFirst(); !figli->eof(); figli->moveNext()) {
            if (m_form.connection()
                    ->openRecordset(
                        legamistatements::conditionsQuery(m_form.companyCode(), nodoCondizioni(*figli), divisione))
                    ->recordCount()
                >= 1) {
                legato = true;
                return;
            }
        }
    });
    return legato;
}

} // namespace distinta
