#include "forms/distinta/strutturanodi.h"

#include <QDateTime>

namespace {

QDate giorno(const QVariant &value)
{
    if (value.isNull())
        return {};
    if (value.metaType().id() == QMetaType::QDateTime)
        return value.toDateTime().date();
    return value.toDate();
}

} // namespace

StrutturaNodi::StrutturaNodi(const db::Recordset &nodi)
{
    const int count = nodi.recordCount();
    const int campoId = nodi.fieldIndex(QStringLiteral("GD02_ID"));
    const int campoPadre = nodi.fieldIndex(QStringLiteral("GD02_IDPARENT_GD02"));
    const int campoCodice = nodi.fieldIndex(QStringLiteral("GD02_CLIFOR_CG44"));
    const int campoInizio = nodi.fieldIndex(QStringLiteral("GD02_DATAINIZIOVAL"));
    const int campoFine = nodi.fieldIndex(QStringLiteral("GD02_DATAFINEVAL"));
    m_ids.resize(size_t(count));
    m_padri.assign(size_t(count), -1);
    m_codici.resize(size_t(count));
    m_inizi.resize(size_t(count));
    m_fini.resize(size_t(count));
    m_indici.reserve(count);
    std::vector<qint64> idPadri(size_t(count), 0);
    for (int row = 0; row < count; ++row) {
        m_ids[size_t(row)] = nodi.valueAt(row, campoId).toLongLong();
        idPadri[size_t(row)] = nodi.valueAt(row, campoPadre).toLongLong();
        m_codici[size_t(row)] = nodi.valueAt(row, campoCodice).toLongLong();
        m_inizi[size_t(row)] = giorno(nodi.valueAt(row, campoInizio));
        m_fini[size_t(row)] = giorno(nodi.valueAt(row, campoFine));
        m_indici.insert(m_ids[size_t(row)], row);
    }
    for (int row = 0; row < count; ++row) {
        if (idPadri[size_t(row)] != 0)
            m_padri[size_t(row)] = indice(idPadri[size_t(row)]);
    }
}

QList<int> StrutturaNodi::ramo(int i) const
{
    if (m_primoFiglio.empty() && !m_ids.empty()) {
        m_primoFiglio.assign(m_ids.size(), -1);
        m_fratello.assign(m_ids.size(), -1);
        for (int n = size() - 1; n >= 0; --n) {
            const int p = m_padri[size_t(n)];
            if (p >= 0) {
                m_fratello[size_t(n)] = m_primoFiglio[size_t(p)];
                m_primoFiglio[size_t(p)] = n;
            }
        }
    }
    QList<int> nodi {i};
    std::vector<bool> visto(m_ids.size(), false);
    visto[size_t(i)] = true;
    for (qsizetype k = 0; k < nodi.size(); ++k) {
        for (int figlio = m_primoFiglio[size_t(nodi[k])]; figlio >= 0; figlio = m_fratello[size_t(figlio)]) {
            if (!visto[size_t(figlio)]) {
                visto[size_t(figlio)] = true;
                nodi << figlio;
            }
        }
    }
    return nodi;
}

QList<int> StrutturaNodi::antenati(int i) const
{
    QList<int> su;
    for (int p = padre(i); p >= 0 && p != i && !su.contains(p) && su.size() < size(); p = padre(p))
        su << p;
    return su;
}

bool StrutturaNodi::validoIl(int i, const QDate &giorno) const
{
    const QDate &da = m_inizi[size_t(i)];
    const QDate &a = m_fini[size_t(i)];
    return da.isValid() && a.isValid() && da <= giorno && giorno <= a;
}
