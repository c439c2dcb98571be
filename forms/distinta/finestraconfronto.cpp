#include "forms/distinta/finestraconfronto.h"

#include "data/sqltext.h"
#include "forms/distinta/campodata.h"
#include "frame/formframe.h"

#include <QDir>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QToolButton>
#include <QVBoxLayout>

namespace distinta {

FinestraConfronto::FinestraConfronto(FormFrame &form, qint64 typeId, int subjectKind, const QString &title)
    : QWidget(&form, Qt::Window)
    , m_form(form)
    , m_typeId(typeId)
    , m_subjectKind(subjectKind)
    , m_title(title)
    , TXT_DATAA(new QLineEdit)
    , TXT_DATAB(new QLineEdit)
    , CMD_ESEGUICONFRONTO(new QPushButton(QStringLiteral("&Confronta")))
    , CMD_SALVACONFRONTO(
          fw::ExportFile::menuButton(QStringLiteral("CMD_SALVACONFRONTO"), QStringLiteral("Sal&va..."),
                                     QStringLiteral("Salva le differenze in Excel o in CSV (Alt+V)"), this,
                                     [this](fw::ExportFile::Format formato) { CMD_SALVACONFRONTO_Click(formato); }))
    , GRD_CONFRONTO(new QTableWidget(0, 3))
{
    setObjectName(QStringLiteral("FRMGD_CONFRONTO"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Confronta date - ") + title);
    TXT_DATAA->setObjectName(QStringLiteral("TXT_DATAA"));
    TXT_DATAB->setObjectName(QStringLiteral("TXT_DATAB"));
    for (QLineEdit *field : {TXT_DATAA, TXT_DATAB}) {
        preparaCampoData(field, CMD_ESEGUICONFRONTO);
    }
    TXT_DATAA->setText(sqltext::dayMonthYear(QDate::currentDate().addMonths(-1)));
    TXT_DATAB->setText(sqltext::dayMonthYear(QDate::currentDate()));
    CMD_ESEGUICONFRONTO->setObjectName(QStringLiteral("CMD_ESEGUICONFRONTO"));
    CMD_ESEGUICONFRONTO->setToolTip(QStringLiteral("Elenca le differenze della distinta tra le due date (Alt+C)"));
    CMD_SALVACONFRONTO->setEnabled(false);

    GRD_CONFRONTO->setObjectName(QStringLiteral("GRD_CONFRONTO"));
    GRD_CONFRONTO->setHorizontalHeaderLabels(
        {QStringLiteral("Differenza"), QStringLiteral("Soggetto"), QStringLiteral("Dettaglio")});
    GRD_CONFRONTO->setEditTriggers(QAbstractItemView::NoEditTriggers);
    GRD_CONFRONTO->setSelectionBehavior(QAbstractItemView::SelectRows);
    GRD_CONFRONTO->verticalHeader()->hide();
    GRD_CONFRONTO->horizontalHeader()->setStretchLastSection(true);
    GRD_CONFRONTO->setToolTip(QStringLiteral("Doppio clic: mostra il nodo nella distinta"));
    connect(GRD_CONFRONTO, &QTableWidget::cellDoubleClicked, this, [this](int row) {
        if (row >= 0 && row < m_differenze.size())
            emit nodoRichiesto(m_differenze.at(row).codice);
    });
    connect(CMD_ESEGUICONFRONTO, &QPushButton::clicked, this, &FinestraConfronto::CMD_ESEGUICONFRONTO_Click);

    auto *campi = new QHBoxLayout;
    auto *etichettaA = new QLabel(QStringLiteral("Dal giorno &A"));
    etichettaA->setBuddy(TXT_DATAA);
    auto *etichettaB = new QLabel(QStringLiteral("al giorno &B"));
    etichettaB->setBuddy(TXT_DATAB);
    campi->addWidget(etichettaA);
    campi->addWidget(TXT_DATAA);
    campi->addWidget(etichettaB);
    campi->addWidget(TXT_DATAB);
    campi->addWidget(CMD_ESEGUICONFRONTO);
    campi->addStretch();
    campi->addWidget(CMD_SALVACONFRONTO);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(campi);
    layout->addWidget(GRD_CONFRONTO, 1);
    resize(900, 500);
}

bool FinestraConfronto::CMD_ESEGUICONFRONTO_Click()
{
    const QDate a = sqltext::parseDayMonthYear(TXT_DATAA->text().trimmed());
    const QDate b = sqltext::parseDayMonthYear(TXT_DATAB->text().trimmed());
    const QString problema = Confronto::problemaDate(a, b);
    if (!problema.isEmpty()) {
        m_form.avviso(problema);
        return false;
    }
    QList<Differenza> differenze;
    if (!m_form.step(QStringLiteral("CMD_CONFRONTA_Click"), [&] {
            differenze = Confronto::confronta(m_form.connection(), m_form.companyCode(), m_typeId, m_subjectKind, a, b);
        }))
        return false;
    m_differenze = differenze;
    mostra();
    return true;
}

void FinestraConfronto::mostra()
{
    GRD_CONFRONTO->setRowCount(int(m_differenze.size()));
    for (int row = 0; row < m_differenze.size(); ++row) {
        const QList<QVariant> valori = Confronto::valori(m_differenze.at(row));
        for (int column = 0; column < valori.size(); ++column)
            GRD_CONFRONTO->setItem(row, column, new QTableWidgetItem(valori.at(column).toString()));
    }
    GRD_CONFRONTO->resizeColumnsToContents();
    CMD_SALVACONFRONTO->setEnabled(!m_differenze.isEmpty());
    if (m_differenze.isEmpty())
        m_form.mostraInBarraDiStato(QStringLiteral("Nessuna differenza tra le due date."));
}

void FinestraConfronto::CMD_SALVACONFRONTO_Click(fw::ExportFile::Format formato)
{
    if (m_differenze.isEmpty())
        return;
    const QString nome = QStringLiteral("Confronto %1 %2 %3")
                             .arg(m_title, TXT_DATAA->text().replace(QLatin1Char('/'), QLatin1Char('-')),
                                  TXT_DATAB->text().replace(QLatin1Char('/'), QLatin1Char('-')));
    const QString percorso = fw::ExportFile::chooseInDocuments(this, formato, nome);
    if (percorso.isEmpty())
        return;
    if (m_form.step(QStringLiteral("CMD_SALVACONFRONTO_Click"),
                    [&] { Confronto::esporta(m_differenze, percorso, formato, m_title); }))
        m_form.notifica(QStringLiteral("Differenze salvate nel file \"%1\".").arg(QDir::toNativeSeparators(percorso)));
}

} // namespace distinta
