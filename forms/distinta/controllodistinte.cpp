#include "forms/distinta/controllodistinte.h"

#include "forms/distinta/selettore.h"
#include "frame/formframe.h"
#include "framework/waitcursor.h"

#include <QPushButton>

namespace distinta {

const QString ControlloDistinte::procedureSalto = QStringLiteral("GRD_VERIFICA_DblClick");

ControlloDistinte::ControlloDistinte(FormFrame &form, Selettore &selettore)
    : m_form(form)
    , m_selettore(selettore)
    , CMD_VERIFICA(new QPushButton(QStringLiteral("&Verifica distinte")))
{
    CMD_VERIFICA->setObjectName(QStringLiteral("CMD_VERIFICA"));
    CMD_VERIFICA->setToolTip(
        QStringLiteral("Cerca i problemi delle distinte della ditta: soggetti mancanti, legami sovrapposti, "
                       "periodi fuori dal padre, righe senza nodo (Alt+V)"));
    connect(CMD_VERIFICA, &QPushButton::clicked, this, &ControlloDistinte::CMD_VERIFICA_Click);
}

void ControlloDistinte::CMD_VERIFICA_Click()
{
    if (!m_form.connection())
        return;
    QList<Anomalia> anomalie;
    {
        fw::WaitCursor wait(&m_form);
        if (!m_form.step(QStringLiteral("CMD_VERIFICA_Click"), [&] {
                anomalie = VerificaDistinte::verifica(m_form.connection(), m_form.companyCode(), QDate::currentDate());
            }))
            return;
    }
    if (m_finestra)
        m_finestra->close();
    m_finestra = new FinestraVerifica(m_form, QStringLiteral("ditta %1").arg(m_form.companyCode()));
    connect(m_finestra, &FinestraVerifica::nodoRichiesto, this, &ControlloDistinte::mostraNodo);
    m_finestra->mostra(anomalie);
    m_finestra->show();
}

void ControlloDistinte::mostraNodo(const Anomalia &anomalia)
{
    if (anomalia.idNodo == 0 || anomalia.codiceTipo.isEmpty())
        return;
    QString chiave;
    if (!m_form.step(procedureSalto, [&] { chiave = m_selettore.chiaveDelCodice(anomalia.codiceTipo); }))
        return;
    if (!chiave.isEmpty())
        emit nodoRichiesto(chiave, anomalia.idNodo, anomalia.soggetto.section(QLatin1Char(' '), 0, 0).toLongLong());
}

} // namespace distinta
