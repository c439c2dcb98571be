// The type maintenance's controls: the navigator bar on top, the fields of the type in two
// columns, the grid of the company's types below them.
#include "forms/anagdistinta/frmgd_anagdistinta.h"

#include "framework/gridnavigator.h"
#include "framework/lookupedit.h"
#include "framework/recordframe.h"
#include "framework/recordsetgrid.h"
#include "framework/workflowstatecontrol.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

template<typename Control>
Control *named(Control *control, const QString &name)
{
    control->setObjectName(name);
    return control;
}

QLabel *descriptionLabel(const QString &name)
{
    auto *label = named(new QLabel, name);
    label->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    label->setMinimumWidth(220);
    label->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    return label;
}

} // namespace

void FRMGD_ANAGDISTINTA::creaControlli()
{
    GRIDNAV = named(new fw::GridNavigator, QStringLiteral("GRIDNAV"));
    cmdAssegnaStato = named(new QPushButton(QStringLiteral("Assegna a n&odi")), QStringLiteral("cmdAssegnaStato"));
    cmdAssegnaStato->setEnabled(false);

    TXT_GD01_CODICE = named(new QLineEdit, QStringLiteral("TXT_GD01_CODICE"));
    TXT_GD01_CODICE->setMaxLength(20);
    TXT_GD01_DESCR = named(new QLineEdit, QStringLiteral("TXT_GD01_DESCR"));
    TXT_GD01_DESCR->setMaxLength(80);
    CMB_GD01_INDTIPOSOGG = named(new QComboBox, QStringLiteral("CMB_GD01_INDTIPOSOGG"));
    TXT_GD01_IDDIV_CO1A = named(new fw::LookupEdit, QStringLiteral("TXT_GD01_IDDIV_CO1A"));
    TXT_GD01_IDDIV_CO1A->setMaxLength(6);
    TXT_DESCRDIV = descriptionLabel(QStringLiteral("TXT_DESCRDIV"));
    TXT_GD01_ID_LP09 = named(new fw::LookupEdit, QStringLiteral("TXT_GD01_ID_LP09"));
    TXT_GD01_ID_LP09->setMaxLength(10);
    TXT_DESCRLISTINO = descriptionLabel(QStringLiteral("TXT_DESCRLISTINO"));
    TXT_GD01_STATO = named(new fw::WorkflowStateControl, QStringLiteral("TXT_GD01_STATO"));
    TXT_GD01_STATO->setUpperCase(true);
    GRID_TIPODISTINTA = named(new fw::RecordsetGrid, QStringLiteral("GRID_TIPODISTINTA"));
    GRID_TIPODISTINTA->setEditTriggers(QAbstractItemView::NoEditTriggers);

    auto *bar = new QHBoxLayout;
    bar->addWidget(GRIDNAV, 1);
    bar->addWidget(cmdAssegnaStato);

    auto *fields = new QGridLayout;
    fields->setColumnStretch(1, 1);
    fields->setColumnStretch(4, 1);
    fields->setColumnMinimumWidth(2, 16);
    fields->addWidget(new QLabel(QStringLiteral("Codice")), 0, 0);
    fields->addWidget(TXT_GD01_CODICE, 0, 1);
    fields->addWidget(new QLabel(QStringLiteral("Tipo distinta")), 0, 3);
    fields->addWidget(CMB_GD01_INDTIPOSOGG, 0, 4);
    fields->addWidget(new QLabel(QStringLiteral("Descrizione")), 1, 0);
    fields->addWidget(TXT_GD01_DESCR, 1, 1, 1, 4);
    fields->addWidget(new QLabel(QStringLiteral("Divisione")), 2, 0);
    auto *division = new QHBoxLayout;
    division->addWidget(TXT_GD01_IDDIV_CO1A);
    division->addWidget(TXT_DESCRDIV, 1);
    fields->addLayout(division, 2, 1, 1, 4);
    fields->addWidget(new QLabel(QStringLiteral("Priorità listini")), 3, 0);
    auto *priority = new QHBoxLayout;
    priority->addWidget(TXT_GD01_ID_LP09);
    priority->addWidget(TXT_DESCRLISTINO, 1);
    fields->addLayout(priority, 3, 1, 1, 4);
    fields->addWidget(new QLabel(QStringLiteral("Stato")), 4, 0);
    fields->addWidget(TXT_GD01_STATO, 4, 1);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addLayout(bar);
    layout->addLayout(fields);
    layout->addWidget(GRID_TIPODISTINTA, 1);
    setTabOrder(TXT_GD01_CODICE, CMB_GD01_INDTIPOSOGG);
    setTabOrder(CMB_GD01_INDTIPOSOGG, TXT_GD01_DESCR);
    setTabOrder(TXT_GD01_DESCR, TXT_GD01_IDDIV_CO1A);
    setTabOrder(TXT_GD01_IDDIV_CO1A, TXT_GD01_ID_LP09);
}

void FRMGD_ANAGDISTINTA::collegaEventi()
{
    // Codes are kept in capitals as they are typed.
    for (QLineEdit *code : {static_cast<QLineEdit *>(TXT_GD01_CODICE), static_cast<QLineEdit *>(TXT_GD01_IDDIV_CO1A),
                            static_cast<QLineEdit *>(TXT_GD01_ID_LP09)}) {
        connect(code, &QLineEdit::textEdited, this, [code](const QString &text) {
            if (text == text.toUpper())
                return;
            const int cursor = code->cursorPosition();
            code->setText(text.toUpper());
            code->setCursorPosition(cursor);
        });
    }
    connect(TXT_GD01_CODICE, &QLineEdit::editingFinished, this, &FRMGD_ANAGDISTINTA::TXT_GD01_CODICE_AfterItem);
    connect(TXT_GD01_IDDIV_CO1A, &fw::LookupEdit::lookupRequested, this, &FRMGD_ANAGDISTINTA::DIVISIONI_Lookup);
    connect(TXT_GD01_IDDIV_CO1A, &fw::LookupEdit::lookupChosen, this, &FRMGD_ANAGDISTINTA::DIVISIONI_Decode);
    connect(TXT_GD01_IDDIV_CO1A, &QLineEdit::editingFinished, this, &FRMGD_ANAGDISTINTA::DIVISIONI_Decode);
    connect(TXT_GD01_ID_LP09, &fw::LookupEdit::lookupRequested, this, &FRMGD_ANAGDISTINTA::PRIORITA_Lookup);
    connect(TXT_GD01_ID_LP09, &fw::LookupEdit::lookupChosen, this, &FRMGD_ANAGDISTINTA::PRIORITA_Decode);
    connect(TXT_GD01_ID_LP09, &QLineEdit::editingFinished, this, &FRMGD_ANAGDISTINTA::PRIORITA_Decode);
    connect(TXT_GD01_STATO, &fw::WorkflowStateControl::AfterItem, this, &FRMGD_ANAGDISTINTA::TXT_GD01_STATO_AfterItem);
    connect(GRIDNAV, &fw::GridNavigator::ButtonClick, this, &FRMGD_ANAGDISTINTA::GRIDNAV_ButtonClick);
    connect(GRIDNAV, &fw::GridNavigator::AfterButtonClick, this, &FRMGD_ANAGDISTINTA::GRIDNAV_AfterButtonClick);
    connect(cmdAssegnaStato, &QPushButton::clicked, this, &FRMGD_ANAGDISTINTA::cmdAssegnaStato_Click);
    GRID_TIPODISTINTA->setRowChangeGuard([this] { return lasciaRiga(); });
}
