#include "forms/parametri/frmgd_parametri.h"

#include "data/testiregole.h"
#include "data/dettaglistatements.h"
#include "data/modgd_distinta.h"
#include "data/sqltext.h"
#include "forms/distinta/frmgd_distinta.h"
#include "framework/gridnavigator.h"
#include "framework/lookupedit.h"
#include "framework/recordframe.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QStandardItemModel>
#include <QToolButton>

namespace {

constexpr int dateFisse = 1;
constexpr int regolaDalPadre = 1;

void riempi(QComboBox *combo, const QStringList &texts)
{
    combo->clear();
    for (int value = 0; value < texts.size(); ++value)
        combo->addItem(texts.at(value), value);
}

} // namespace

// A window of its own that the editor owns: it goes with the editor at the latest. The shell's MDI
// area, when it shows the form, takes it over.
FRMGD_PARAMETRI::FRMGD_PARAMETRI(FRMGD_DISTINTA *editor)
    : FormFrame(editor)
    , m_editor(editor)
{
    setWindowFlag(Qt::Window);
    setObjectName(QStringLiteral("FRMGD_PARAMETRI"));
    setWindowTitle(QStringLiteral("Parametri"));
    if (editor) {
        setActiveDll(editor->ActiveDll());
        setEntryClass(editor->entryClass());
    }
    creaControlli();
    connect(CMB_GD03_TIPOCARICODATA, &QComboBox::activated, this, &FRMGD_PARAMETRI::CMB_GD03_TIPOCARICODATA_Click);
    connect(CBO_EREPROMO, &QComboBox::activated, this, &FRMGD_PARAMETRI::CBO_EREPROMO_Click);
    connect(TXT_GD03_ID_WF02, &fw::LookupEdit::lookupRequested, this, &FRMGD_PARAMETRI::STATO_Lookup);
    connect(TXT_GD03_ID_WF02, &fw::LookupEdit::lookupChosen, this, &FRMGD_PARAMETRI::STATO_Decode);
    connect(TXT_GD03_ID_WF02, &QLineEdit::editingFinished, this, &FRMGD_PARAMETRI::STATO_Decode);
}

FRMGD_PARAMETRI::~FRMGD_PARAMETRI() = default;

// 4995 by 4815 twips as designed, or what the controls need in the user's font.
void FRMGD_PARAMETRI::loadForm()
{
    m_inCaricamento = true;
    const QSize disegno(4995 / 15, 4815 / 15);
    resize(sizeHint().expandedTo(disegno));
    CaricaCombo();
}

bool FRMGD_PARAMETRI::activateForm()
{
    // The editor's connection: what is saved here is what its next read finds.
    if (m_editor && m_editor->connection())
        setConnection(m_editor->connection());
    AttivaFrameParametri();
    fw::RecordFrame *frame = recordFrame();
    if (!frame)
        return false;
    if (!step(QStringLiteral("Form_Activate"), [&] {
            if (frame->recordset()->recordCount() < 1)
                frame->addNew();
        }))
        return false;
    abilitaDate();
    STATO_Decode();
    mostraEreditaPromo();
    m_inCaricamento = false;
    return true;
}

void FRMGD_PARAMETRI::CaricaCombo()
{
    riempi(CMB_GD03_TIPOCARICODATA, testiregole::caricamentoDate());
    riempi(CMB_GD03_TIPOANAGFATT, testiregole::regoleFatturazione());
    riempi(CBO_EREPROMO, testiregole::regolePromozioni());
}

void FRMGD_PARAMETRI::AttivaFrameParametri()
{
    step(QStringLiteral("AttivaFrameParametri"), [this] {
        fw::RecordFrame *frame = openRecordFrame(dettaglistatements::parametersRowQuery(companyCode()),
                                                 QStringLiteral("GD03_DITTA_CG18"));
        frame->setObjectName(QStringLiteral("FME_PARAMETRI"));
        registraNelloStorico(frame, QStringLiteral("FME_PARAMETRI"));
        frame->bind(TXT_GD03_ID_WF02, QStringLiteral("GD03_ID_WF02"));
        frame->bind(CMB_GD03_TIPOCARICODATA, QStringLiteral("GD03_TIPOCARICODATA"));
        frame->bind(TXT_GD03_DATAINIZIOVAL, QStringLiteral("GD03_DATAINIZIOVAL"));
        frame->bind(TXT_GD03_DATAFINEVAL, QStringLiteral("GD03_DATAFINEVAL"));
        frame->bind(CMB_GD03_TIPOANAGFATT, QStringLiteral("GD03_TIPOANAGFATT"));
        frame->bind(CHK_GD03_FLG_PROV, QStringLiteral("GD03_FLG_PROV"));
        frame->bind(CHK_GD03_FLG_CONDVEND, QStringLiteral("GD03_FLG_CONDVEND"));
        frame->bind(CHK_GD03_FLG_CLAS, QStringLiteral("GD03_FLG_CLAS"));
        frame->bind(CHK_GD03_FLG_ANAG, QStringLiteral("GD03_FLG_ANAG"));
        connect(frame, &fw::RecordFrame::AfterAddNew, this, &FRMGD_PARAMETRI::FME_PARAMETRI_AfterAddNew);
        connect(frame, &fw::RecordFrame::BeforeUpdate, this, &FRMGD_PARAMETRI::FME_PARAMETRI_BeforeUpdate);
        connect(frame, &fw::RecordFrame::ChangeStatus, this, &FRMGD_PARAMETRI::FME_PARAMETRI_ChangeStatus);
        connect(frame, &fw::RecordFrame::rowShown, this, [this] {
            abilitaDate();
            STATO_Decode();
        });
        GRIDNAV_PARAMETRI->attach(frame, [this](const QString &procedure, const std::function<void()> &statement) {
            return step(procedure, statement);
        });
        // One row per company: there is no other row to make, and the row is not removed here.
        GRIDNAV_PARAMETRI->button(QStringLiteral("Nuovo"))->hide();
        GRIDNAV_PARAMETRI->button(QStringLiteral("Elimina"))->hide();
        GRIDNAV_PARAMETRI->button(QStringLiteral("Stampa"))->hide();
    });
}

void FRMGD_PARAMETRI::FME_PARAMETRI_AfterAddNew()
{
    step(QStringLiteral("FME_PARAMETRI_AfterAddNew"),
         [this] { recordFrame()->recordset()->setValue(QStringLiteral("GD03_DITTA_CG18"), companyCode()); });
}

// The company is written on every save; dates must read as dates and may not run backwards
// (the same day at both ends is a period).
void FRMGD_PARAMETRI::FME_PARAMETRI_BeforeUpdate(bool &cancel)
{
    step(QStringLiteral("FME_PARAMETRI_BeforeUpdate"),
         [this] { recordFrame()->recordset()->setValue(QStringLiteral("GD03_DITTA_CG18"), companyCode()); });
    const QString inizio = TXT_GD03_DATAINIZIOVAL->text().trimmed();
    const QString fine = TXT_GD03_DATAFINEVAL->text().trimmed();
    if (!inizio.isEmpty() && !sqltext::isDayMonthYear(inizio)) {
        cancel = rifiuta(QStringLiteral("La data di inizio validità non è una data valida (gg/mm/aaaa)"),
                         TXT_GD03_DATAINIZIOVAL);
        return;
    }
    if (!fine.isEmpty() && !sqltext::isDayMonthYear(fine)) {
        cancel = rifiuta(QStringLiteral("La data di fine validità non è una data valida (gg/mm/aaaa)"),
                         TXT_GD03_DATAFINEVAL);
        return;
    }
    if (!inizio.isEmpty() && !fine.isEmpty() && sqltext::parseDayMonthYear(inizio) > sqltext::parseDayMonthYear(fine))
        cancel = rifiuta(QStringLiteral("Attenzione la data di inizio validità deve essere inferiore alla data di fine "
                                        "validità"),
                         TXT_GD03_DATAINIZIOVAL);
}

bool FRMGD_PARAMETRI::rifiuta(const QString &text, QLineEdit *focus)
{
    avviso(text);
    focus->setFocus();
    return true;
}

void FRMGD_PARAMETRI::FME_PARAMETRI_ChangeStatus(int)
{
    GRIDNAV_PARAMETRI->updateButtons();
}

// The user's choice: fixed dates are typed here; dates from the parent node leave no date.
void FRMGD_PARAMETRI::CMB_GD03_TIPOCARICODATA_Click()
{
    abilitaDate();
    if (CMB_GD03_TIPOCARICODATA->currentData().toInt() == dateFisse)
        return;
    TXT_GD03_DATAINIZIOVAL->clear();
    TXT_GD03_DATAFINEVAL->clear();
}

void FRMGD_PARAMETRI::abilitaDate()
{
    const bool fisse = CMB_GD03_TIPOCARICODATA->currentIndex() >= 0
        && CMB_GD03_TIPOCARICODATA->currentData().toInt() == dateFisse;
    TXT_GD03_DATAINIZIOVAL->setEnabled(fisse);
    TXT_GD03_DATAFINEVAL->setEnabled(fisse);
}

void FRMGD_PARAMETRI::STATO_Lookup()
{
    step(QStringLiteral("STATO_Lookup"), [this] {
        const db::RecordsetPtr rows = connection()->openRecordset(dettaglistatements::linkStateLookupQuery());
        TXT_GD03_ID_WF02->showLookup(
            QStringLiteral("lkp_Stati"), QStringLiteral("Stati del legame"), rows,
            {{.key = QStringLiteral("WF01_ID"), .caption = QStringLiteral("Id"), .width = 700},
             {.key = QStringLiteral("WF01_CODICE"), .caption = QStringLiteral("Codice"), .width = 1200},
             {.key = QStringLiteral("WF01_DESCR"), .caption = QStringLiteral("Descrizione"), .width = 3000}},
            QStringLiteral("WF01_ID"));
    });
}

void FRMGD_PARAMETRI::STATO_Decode()
{
    bool ok = false;
    const qint64 stato = TXT_GD03_ID_WF02->text().trimmed().toLongLong(&ok);
    lblStato->clear();
    if (!ok || !connection())
        return;
    step(QStringLiteral("STATO_Decode"), [&] {
        const db::RecordsetPtr rows = connection()->openRecordset(dettaglistatements::linkStateDecodeQuery(stato));
        lblStato->setText(rows->isEmpty() ? QStringLiteral("Stato inesistente")
                                          : MODGD_DISTINTA::NvlStringa(rows->valueAt(0, 0)));
    });
}

void FRMGD_PARAMETRI::mostraEreditaPromo()
{
    const db::RecordsetPtr nodi = m_editor ? m_editor->nodi() : nullptr;
    const bool nodo = nodi && nodi->currentRow() >= 0;
    CBO_EREPROMO->setEnabled(nodo);
    if (!nodo) {
        CBO_EREPROMO->setCurrentIndex(-1);
        return;
    }
    // A root has no parent to inherit from.
    const bool radice = MODGD_DISTINTA::NvlNumero(nodi->value(QStringLiteral("GD02_IDPARENT_GD02"))).toLongLong() == 0;
    if (auto *regole = qobject_cast<QStandardItemModel *>(CBO_EREPROMO->model());
        regole && regole->item(regolaDalPadre))
        regole->item(regolaDalPadre)->setEnabled(!radice);
    CBO_EREPROMO->setCurrentIndex(
        CBO_EREPROMO->findData(MODGD_DISTINTA::NvlNumero(nodi->value(QStringLiteral("GD02_INDEREPROMO"))).toInt()));
}

void FRMGD_PARAMETRI::CBO_EREPROMO_Click()
{
    if (m_inCaricamento || !m_editor)
        return;
    const db::RecordsetPtr nodi = m_editor->nodi();
    if (!nodi || nodi->currentRow() < 0)
        return;
    qint64 idNodo = 0;
    short regola = 0;
    if (!step(QStringLiteral("CBO_EREPROMO_Click"), [&] {
            idNodo = qint32(MODGD_DISTINTA::NvlNumero(nodi->value(QStringLiteral("GD02_ID"))).toLongLong());
            regola = short(CBO_EREPROMO->currentData().toInt());
        }))
        return;
    m_editor->ApplicaEreditaPromozioni(idNodo, regola);
    mostraEreditaPromo();
}

void FRMGD_PARAMETRI::formClosing()
{
    GRIDNAV_PARAMETRI->detach();
}

void FRMGD_PARAMETRI::LAYSCRIPTMEDIA_OnAddStruttura(fw::LayoutStructureModel &model)
{
    model.addStructure(QStringLiteral("Applicazioni per articolo"));
}
