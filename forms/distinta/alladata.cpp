#include "forms/distinta/alladata.h"

#include "data/sqltext.h"
#include "forms/distinta/strutturanodi.h"
#include "frame/formframe.h"
#include "framework/treelist/treelist.h"
#include "framework/treelist/treelistmodel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

namespace distinta {

AllaData::AllaData(FormFrame &form, fw::TreeList *albero)
    : m_form(form)
    , m_albero(albero)
    , TXT_DATAVALIDITA(new QLineEdit)
{
    TXT_DATAVALIDITA->setObjectName(QStringLiteral("TXT_DATAVALIDITA"));
    TXT_DATAVALIDITA->setPlaceholderText(QStringLiteral("gg/mm/aaaa"));
    TXT_DATAVALIDITA->setClearButtonEnabled(true);
    TXT_DATAVALIDITA->setFixedWidth(TXT_DATAVALIDITA->fontMetrics().horizontalAdvance(QStringLiteral("00/00/00000"))
                                    + 40);
    TXT_DATAVALIDITA->setToolTip(QStringLiteral("La distinta com'era in quel giorno: solo i legami validi alla data "
                                                "(vuoto: tutta la distinta). Alt+D, Invio per applicare"));
    connect(TXT_DATAVALIDITA, &QLineEdit::editingFinished, this,
            [this] { ImpostaDataValidita(TXT_DATAVALIDITA->text()); });
    connect(albero, &fw::TreeList::customDrawCell, this, &AllaData::segnaNodoNonValido);
    albero->model()->setRowForeground([this](int row) -> QColor {
        if (m_nonValidi.isEmpty() || !m_nodi.lock())
            return {};
        return m_nonValidi.contains(idDellaRiga(row)) ? m_albero->palette().color(QPalette::Disabled, QPalette::Text)
                                                      : QColor();
    });
}

// The tree outlives this part by a moment: it must not ask it for colours any more.
AllaData::~AllaData()
{
    m_albero->model()->setRowForeground({});
}

QLayout *AllaData::creaCampo()
{
    auto *etichetta = new QLabel(QStringLiteral("Alla &data"));
    etichetta->setBuddy(TXT_DATAVALIDITA);
    auto *layout = new QHBoxLayout;
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(etichetta);
    layout->addWidget(TXT_DATAVALIDITA);
    return layout;
}

// A year outside what the database's dates hold is no date either.
std::optional<QDate> AllaData::leggiDataValidita(const QString &testo, bool *ok)
{
    *ok = true;
    const QString text = testo.trimmed();
    if (text.isEmpty())
        return std::nullopt;
    const QDate date = sqltext::parseDayMonthYear(text);
    if (date.isValid() && date.year() >= 1753 && date.year() <= 9999)
        return date;
    *ok = false;
    return std::nullopt;
}

bool AllaData::ImpostaDataValidita(const QString &testo)
{
    if (m_dataInVerifica)
        return false;
    bool ok = false;
    const std::optional<QDate> giorno = leggiDataValidita(testo, &ok);
    const QString mostrata = m_dataValidita ? sqltext::dayMonthYear(*m_dataValidita) : QString();
    if (!ok) {
        // The field shows the date in force again before the message takes the focus away.
        m_dataInVerifica = true;
        TXT_DATAVALIDITA->setText(mostrata);
        m_form.avviso(
            QStringLiteral("Data non valida: \"%1\". Scrivere la data come gg/mm/aaaa, per esempio 01/01/2024.")
                .arg(testo.trimmed()));
        m_dataInVerifica = false;
        return false;
    }
    const QString nuova = giorno ? sqltext::dayMonthYear(*giorno) : QString();
    if (TXT_DATAVALIDITA->text() != nuova)
        TXT_DATAVALIDITA->setText(nuova);
    if (giorno == m_dataValidita)
        return true;
    m_dataValidita = giorno;
    emit dataCambiata();
    return true;
}

void AllaData::impostaSenzaFinestra(const std::optional<QDate> &giorno)
{
    m_dataValidita = giorno;
    if (giorno)
        TXT_DATAVALIDITA->setText(sqltext::dayMonthYear(*giorno));
}

QString AllaData::intestazioneData() const
{
    return m_dataValidita ? QStringLiteral(" alla data ") + sqltext::dayMonthYear(*m_dataValidita) : QString();
}

// Rows valid on the day stay, with every ancestor they need; the others leave the client-side
// set without any write. One pass up from each valid row, stopping at a row already kept.
void AllaData::filtra(const db::RecordsetPtr &nodi)
{
    m_nonValidi.clear();
    m_struttura.reset();
    m_nodi = nodi;
    if (!m_dataValidita || !nodi || nodi->isEmpty())
        return;
    auto struttura = std::make_shared<StrutturaNodi>(*nodi);
    const QDate giorno = *m_dataValidita;
    std::vector<char> tieni(size_t(struttura->size()), 0);
    for (int i = 0; i < struttura->size(); ++i) {
        if (tieni[size_t(i)] || !struttura->validoIl(i, giorno))
            continue;
        tieni[size_t(i)] = 1;
        for (int p = struttura->padre(i); p >= 0 && !tieni[size_t(p)]; p = struttura->padre(p)) {
            tieni[size_t(p)] = 1;
            if (!struttura->validoIl(p, giorno))
                m_nonValidi.insert(struttura->id(p));
        }
    }
    QList<int> fuori;
    for (int i = 0; i < struttura->size(); ++i) {
        if (!tieni[size_t(i)])
            fuori << i;
    }
    nodi->forgetRows(fuori);
    m_struttura = std::move(struttura);
}

qint64 AllaData::idDellaRiga(int row) const
{
    const db::RecordsetPtr nodi = m_nodi.lock();
    return nodi ? nodi->valueAt(row, nodi->fieldIndex(QStringLiteral("GD02_ID"))).toLongLong() : 0;
}

void AllaData::segnaNodoNonValido(const fw::TreeListNode &node, const QString &column, QString &text)
{
    if (m_nonValidi.isEmpty() || !m_dataValidita || column != QLatin1String("RagioneSociale") || !m_nodi.lock())
        return;
    if (m_nonValidi.contains(idDellaRiga(node.row())))
        text += QStringLiteral("  (non valido al ") + sqltext::dayMonthYear(*m_dataValidita) + QLatin1Char(')');
}

} // namespace distinta
