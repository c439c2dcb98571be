// The search across every classification of the company, whose result rows jump to the
// subject's node.
#include "forms/distinta/paginaricerca.h"

#include "data/ricercastatements.h"
#include "frame/formframe.h"
#include "framework/emptyviewhint.h"
#include "framework/recordsetgrid.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace distinta {

PaginaRicerca::PaginaRicerca(FormFrame &form)
    : m_form(form)
    , m_pagina(new QWidget)
    , TXT_CODICE(new QLineEdit)
    , TXT_RAGIONESOC(new QLineEdit)
    , CMD_RICERCA(new QPushButton(QStringLiteral("Cer&ca")))
    , GRD_CERCADISTINTA(new fw::RecordsetGrid)
{
    TXT_CODICE->setObjectName(QStringLiteral("TXT_CODICE"));
    TXT_RAGIONESOC->setObjectName(QStringLiteral("TXT_RAGIONESOC"));
    CMD_RICERCA->setObjectName(QStringLiteral("CMD_RICERCA"));
    CMD_RICERCA->setToolTip(QStringLiteral("Cerca il soggetto in tutte le distinte della ditta (Alt+C, Invio)"));
    GRD_CERCADISTINTA->setObjectName(QStringLiteral("GRD_CERCADISTINTA"));
    using Kind = fw::RecordsetGridColumn::Kind;
    // The results use the page's width; a subject's name and a classification stay readable.
    GRD_CERCADISTINTA->setFillWidth(true);
    GRD_CERCADISTINTA->setColumns({
        {.key = QStringLiteral("VAI"), .caption = QStringLiteral("Vai"), .width = 600, .kind = Kind::Button},
        {.key = QStringLiteral("ANAGRAFICA"),
         .caption = QStringLiteral("Anagrafica"),
         .width = 2000,
         .widthSample = QStringLiteral("9999 Commerciale Rossi Srl")},
        {.key = QStringLiteral("DISTINTA"),
         .caption = QStringLiteral("Distinta"),
         .width = 2000,
         .widthSample = QStringLiteral("CLI-HOR Canale Ho.Re.Ca.")},
    });

    auto *criteri = new QFormLayout;
    criteri->addRow(QStringLiteral("Codice"), TXT_CODICE);
    criteri->addRow(QStringLiteral("Ragione sociale"), TXT_RAGIONESOC);
    auto *pulsante = new QHBoxLayout;
    pulsante->addStretch();
    pulsante->addWidget(CMD_RICERCA);
    auto *layout = new QVBoxLayout(m_pagina);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addLayout(criteri);
    layout->addLayout(pulsante);
    layout->addWidget(GRD_CERCADISTINTA);

    connect(GRD_CERCADISTINTA, &fw::RecordsetGrid::buttonClicked, this, &PaginaRicerca::GRD_CERCADISTINTA_ButtonClick);
    // A double click or Enter on a result does what its "Vai" button does.
    connect(GRD_CERCADISTINTA, &fw::RecordsetGrid::rowChosen, this,
            [this](int row) { GRD_CERCADISTINTA_ButtonClick(row, QStringLiteral("VAI")); });
    connect(CMD_RICERCA, &QPushButton::clicked, this,
            [this] { cercaDaCaselle(QStringLiteral("CMD_RICERCA_ButtonClick")); });
    connect(TXT_CODICE, &QLineEdit::returnPressed, this,
            [this] { cercaDaCaselle(QStringLiteral("TXT_RAGIONESOC_KeyDown")); });
    connect(TXT_RAGIONESOC, &QLineEdit::returnPressed, this,
            [this] { cercaDaCaselle(QStringLiteral("TXT_RAGIONESOC_KeyDown")); });
    m_vuoto = new fw::EmptyViewHint(GRD_CERCADISTINTA, [this]() -> QString {
        return m_risultatiRicerca ? QStringLiteral("Nessun nodo trovato: cambiare codice o ragione sociale.")
                                  : QStringLiteral("Indicare un codice o una ragione sociale e premere «Cerca».");
    });
}

PaginaRicerca::~PaginaRicerca()
{
    delete m_vuoto;
}

QList<QWidget *> PaginaRicerca::ordineTab() const
{
    return {TXT_CODICE, TXT_RAGIONESOC, CMD_RICERCA, GRD_CERCADISTINTA};
}

void PaginaRicerca::rilascia()
{
    GRD_CERCADISTINTA->setRecordset(nullptr);
    m_risultatiRicerca.reset();
}

void PaginaRicerca::cercaDaCaselle(const QString &procedure)
{
    m_form.step(procedure, [this] { CercaDistinte(TXT_CODICE->text(), TXT_RAGIONESOC->text()); });
}

void PaginaRicerca::CercaDistinte(const QString &codice, const QString &ragioneSociale)
{
    m_risultatiRicerca = m_form.connection()->openRecordset(
        ricercastatements::crossListSearchQuery(m_form.companyCode(), codice, ragioneSociale));
    GRD_CERCADISTINTA->setRecordset(m_risultatiRicerca);
    if (m_risultatiRicerca->recordCount() == 0)
        m_form.avviso(QStringLiteral("La ricerca non ha prodotto alcun risultato."));
}

void PaginaRicerca::GRD_CERCADISTINTA_ButtonClick(int row, const QString &key)
{
    if (key != QLatin1String("VAI") || !m_risultatiRicerca)
        return;
    int tipoSoggetto = 0;
    QString distinta;
    QString codice;
    if (!m_form.step(QStringLiteral("GRD_CERCADISTINTA_ButtonClick"), [&] {
            m_risultatiRicerca->setCurrentRow(row);
            tipoSoggetto = m_risultatiRicerca->value(QStringLiteral("TIPOCF")).toInt() == 0 ? 0 : 1;
            distinta = m_risultatiRicerca->value(QStringLiteral("DISTINTA")).toString();
            codice = m_risultatiRicerca->value(QStringLiteral("CLIFOR")).toString();
        }))
        return;
    emit nodoRichiesto(tipoSoggetto, distinta, codice);
}

} // namespace distinta
