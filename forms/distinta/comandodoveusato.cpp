#include "forms/distinta/comandodoveusato.h"

#include "frame/formframe.h"

namespace distinta {

ComandoDoveUsato::ComandoDoveUsato(FormFrame &form)
    : m_form(form)
{ }

void ComandoDoveUsato::mnuDoveUsato_Click(int subjectKind, qint64 subjectCode)
{
    if (subjectKind < 0)
        return;
    QString nome;
    QList<Uso> usi;
    if (!m_form.step(QStringLiteral("mnuDoveUsato_Click"), [&] {
            nome = DoveUsato::nome(m_form.connection(), m_form.companyCode(), subjectKind, subjectCode);
            usi = DoveUsato::leggi(m_form.connection(), m_form.companyCode(), subjectKind, subjectCode,
                                   QDate::currentDate());
        }))
        return;
    if (m_finestra)
        m_finestra->close();
    m_finestra = new FinestraDoveUsato(m_form, QString::number(subjectCode) + QLatin1Char(' ') + nome, usi);
    connect(m_finestra, &FinestraDoveUsato::nodoRichiesto, this,
            [this, subjectCode](const QString &chiaveTipo, qint64 idNodo) {
                emit nodoRichiesto(chiaveTipo, idNodo, subjectCode);
            });
    m_finestra->show();
}

} // namespace distinta
