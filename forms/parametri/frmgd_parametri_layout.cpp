// The controls of the parameters form, in the frames the user knows them by.
#include "forms/parametri/frmgd_parametri.h"

#include "framework/gridnavigator.h"
#include "framework/lookupedit.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace {

template<typename Control>
Control *named(Control *control, const QString &name)
{
    control->setObjectName(name);
    return control;
}

QGroupBox *riquadro(const QString &title, QLayout *layout)
{
    auto *box = new QGroupBox(title);
    box->setLayout(layout);
    return box;
}

} // namespace

void FRMGD_PARAMETRI::creaControlli()
{
    GRIDNAV_PARAMETRI = named(new fw::GridNavigator, QStringLiteral("GRIDNAV_PARAMETRI"));

    TXT_GD03_ID_WF02 = named(new fw::LookupEdit, QStringLiteral("TXT_GD03_ID_WF02"));
    TXT_GD03_ID_WF02->setValidator(new QIntValidator(0, 999999999, TXT_GD03_ID_WF02));
    TXT_GD03_ID_WF02->setMaximumWidth(90);
    lblStato = named(new QLabel, QStringLiteral("lblStato"));
    auto *stato = new QHBoxLayout;
    stato->addWidget(new QLabel(QStringLiteral("Stato del legame")));
    stato->addWidget(TXT_GD03_ID_WF02);
    stato->addWidget(lblStato, 1);

    CMB_GD03_TIPOCARICODATA = named(new QComboBox, QStringLiteral("CMB_GD03_TIPOCARICODATA"));
    TXT_GD03_DATAINIZIOVAL = named(new QLineEdit, QStringLiteral("TXT_GD03_DATAINIZIOVAL"));
    TXT_GD03_DATAFINEVAL = named(new QLineEdit, QStringLiteral("TXT_GD03_DATAFINEVAL"));
    for (QLineEdit *date : {TXT_GD03_DATAINIZIOVAL, TXT_GD03_DATAFINEVAL}) {
        date->setPlaceholderText(QStringLiteral("gg/mm/aaaa"));
        date->setMaximumWidth(110);
    }
    auto *date = new QFormLayout;
    date->addRow(QStringLiteral("Tipo valorizzazione"), CMB_GD03_TIPOCARICODATA);
    date->addRow(QStringLiteral("Data inizio "), TXT_GD03_DATAINIZIOVAL);
    date->addRow(QStringLiteral("Data fine"), TXT_GD03_DATAFINEVAL);

    CMB_GD03_TIPOANAGFATT = named(new QComboBox, QStringLiteral("CMB_GD03_TIPOANAGFATT"));
    auto *fatturazione = new QFormLayout;
    fatturazione->addRow(QStringLiteral("Tipo fatturazione"), CMB_GD03_TIPOANAGFATT);

    CHK_GD03_FLG_PROV = named(new QCheckBox(QStringLiteral("Provvigioni e listini")),
                              QStringLiteral("CHK_GD03_FLG_PROV"));
    CHK_GD03_FLG_CONDVEND = named(new QCheckBox(QStringLiteral("Condizioni di vendita")),
                                  QStringLiteral("CHK_GD03_FLG_CONDVEND"));
    CHK_GD03_FLG_CLAS = named(new QCheckBox(QStringLiteral("Classificazioni")), QStringLiteral("CHK_GD03_FLG_CLAS"));
    CHK_GD03_FLG_ANAG = named(new QCheckBox(QStringLiteral("Anagrafica")), QStringLiteral("CHK_GD03_FLG_ANAG"));
    CHK_GD03_FLG_ANAG->hide();
    auto *visualizzazione = new QVBoxLayout;
    for (QCheckBox *flag : {CHK_GD03_FLG_PROV, CHK_GD03_FLG_CONDVEND, CHK_GD03_FLG_CLAS, CHK_GD03_FLG_ANAG})
        visualizzazione->addWidget(flag);

    CBO_EREPROMO = named(new QComboBox, QStringLiteral("CBO_EREPROMO"));
    auto *promozioni = new QFormLayout;
    promozioni->addRow(QStringLiteral("Promozioni del nodo"), CBO_EREPROMO);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(GRIDNAV_PARAMETRI);
    layout->addWidget(riquadro(QStringLiteral("Stato distinta anagrafiche"), stato));
    layout->addWidget(riquadro(QStringLiteral("Date validità del legame"), date));
    layout->addWidget(riquadro(QStringLiteral("Anagrafica di fatturazione"), fatturazione));
    layout->addWidget(riquadro(QStringLiteral("Parametri visualizzazione dati anagrafici"), visualizzazione));
    layout->addLayout(promozioni);
    layout->addStretch();
}
