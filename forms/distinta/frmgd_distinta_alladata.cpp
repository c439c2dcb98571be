// The classification as it was on a day: only the links valid that day (start <= day <= end,
// closed at both ends as the overlap check is), with the ancestors that carry them even when
// they were not valid themselves; those are drawn greyed and say so. Empty date: every node,
// as the list is without this choice. The same node statement is read; the rows of other days
// are set aside in memory, so the database sees nothing new.
#include "forms/distinta/frmgd_distinta.h"

#include "data/sqltext.h"
#include "forms/distinta/strutturanodi.h"
#include "framework/treelist/treelist.h"
#include "framework/treelist/treelistmodel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

namespace {

const QString formatoData = QStringLiteral("dd/MM/yyyy");

} // namespace

QLayout *FRMGD_DISTINTA::creaDataValidita()
{
    TXT_DATAVALIDITA = new QLineEdit;
    TXT_DATAVALIDITA->setObjectName(QStringLiteral("TXT_DATAVALIDITA"));
    TXT_DATAVALIDITA->setPlaceholderText(QStringLiteral("gg/mm/aaaa"));
    TXT_DATAVALIDITA->setClearButtonEnabled(true);
    TXT_DATAVALIDITA->setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("00/00/00000")) + 40);
    TXT_DATAVALIDITA->setToolTip(QStringLiteral("La distinta com'era in quel giorno: solo i legami validi alla data "
                                                "(vuoto: tutta la distinta). Alt+D, Invio per applicare"));
    auto *etichetta = new QLabel(QStringLiteral("Alla &data"));
    etichetta->setBuddy(TXT_DATAVALIDITA);
    auto *layout = new QHBoxLayout;
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(etichetta);
    layout->addWidget(TXT_DATAVALIDITA);
    return layout;
}

void FRMGD_DISTINTA::collegaDataValidita()
{
    connect(TXT_DATAVALIDITA, &QLineEdit::editingFinished, this, [this] {
        ImpostaDataValidita(TXT_DATAVALIDITA->text());
    });
    connect(TVW_DISTINTA, &fw::TreeList::customDrawCell, this, &FRMGD_DISTINTA::segnaNodoNonValido);
    TVW_DISTINTA->model()->setRowForeground([this](int row) -> QColor {
        if (m_nonValidiAllaData.isEmpty() || !m_nodi)
            return {};
        const qint64 id = m_nodi->valueAt(row, m_nodi->fieldIndex(QStringLiteral("GD02_ID"))).toLongLong();
        return m_nonValidiAllaData.contains(id) ? palette().color(QPalette::Disabled, QPalette::Text) : QColor();
    });
}

// dd/mm/yyyy (a single digit for day or month will do); empty text is no date. A year outside
// what the database's dates hold is no date either.
std::optional<QDate> FRMGD_DISTINTA::leggiDataValidita(const QString &testo, bool *ok)
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

bool FRMGD_DISTINTA::ImpostaDataValidita(const QString &testo)
{
    if (m_dataInVerifica)
        return false;
    bool ok = false;
    const std::optional<QDate> data = leggiDataValidita(testo, &ok);
    const QString mostrata = m_dataValidita ? m_dataValidita->toString(formatoData) : QString();
    if (!ok) {
        // The field shows the date in force again before the message takes the focus away.
        m_dataInVerifica = true;
        TXT_DATAVALIDITA->setText(mostrata);
        avviso(QStringLiteral("Data non valida: \"%1\". Scrivere la data come gg/mm/aaaa, per esempio 01/01/2024.")
                   .arg(testo.trimmed()));
        m_dataInVerifica = false;
        return false;
    }
    if (TXT_DATAVALIDITA->text() != (data ? data->toString(formatoData) : QString()))
        TXT_DATAVALIDITA->setText(data ? data->toString(formatoData) : QString());
    if (data == m_dataValidita)
        return true;
    m_dataValidita = data;
    CaricaIntestazioneDistinta();
    CaricaDistinta();
    return true;
}

QString FRMGD_DISTINTA::intestazioneData() const
{
    return m_dataValidita ? QStringLiteral(" alla data ") + m_dataValidita->toString(formatoData) : QString();
}

// Rows valid on the day stay, with every ancestor they need; the others leave the client-side
// set without any write. One pass up from each valid row, stopping at a row already kept.
void FRMGD_DISTINTA::filtraAllaData(const db::RecordsetPtr &nodi)
{
    m_nonValidiAllaData.clear();
    m_strutturaAllaData.reset();
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
                m_nonValidiAllaData.insert(struttura->id(p));
        }
    }
    QList<int> fuori;
    for (int i = 0; i < struttura->size(); ++i) {
        if (!tieni[size_t(i)])
            fuori << i;
    }
    nodi->forgetRows(fuori);
    m_strutturaAllaData = std::move(struttura);
}

void FRMGD_DISTINTA::segnaNodoNonValido(const fw::TreeListNode &node, const QString &column, QString &text)
{
    if (m_nonValidiAllaData.isEmpty() || !m_dataValidita || column != QLatin1String("RagioneSociale") || !m_nodi)
        return;
    const qint64 id = m_nodi->valueAt(node.row(), m_nodi->fieldIndex(QStringLiteral("GD02_ID"))).toLongLong();
    if (m_nonValidiAllaData.contains(id))
        text += QStringLiteral("  (non valido al ") + m_dataValidita->toString(formatoData) + QLatin1Char(')');
}

bool FRMGD_DISTINTA::nodoNonValidoAllaData(qint64 idNodo) const
{
    return m_nonValidiAllaData.contains(idNodo);
}
