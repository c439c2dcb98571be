#include "shell/cards/subjectcardform.h"

#include "data/modgd_distinta.h"
#include "data/schedastatements.h"
#include "framework/recordsetgrid.h"
#include "platform/db/dayformat.h"

#include <QDateTime>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace {

QString giorno(const QVariant &value)
{
    return value.isNull() ? QString() : value.toDateTime().toString(db::dayFormat);
}

} // namespace

SubjectCardForm::SubjectCardForm(int subjectKind, QWidget *parent)
    : FormFrame(parent)
    , m_subjectKind(subjectKind)
    , txtCodice(campo(QStringLiteral("txtCodice")))
    , txtRagioneSociale(campo(QStringLiteral("txtRagioneSociale")))
    , txtIndirizzo(campo(QStringLiteral("txtIndirizzo")))
    , txtCitta(campo(QStringLiteral("txtCitta")))
    , txtTelefono(campo(QStringLiteral("txtTelefono")))
    , txtPagamento(campo(QStringLiteral("txtPagamento")))
    , grdDistinte(new fw::RecordsetGrid(this))
{
    setObjectName(subjectKind == 0 ? QStringLiteral("FRMSCHEDA_CLIENTE") : QStringLiteral("FRMSCHEDA_FORNITORE"));
    setWindowTitle(subjectKind == 0 ? QStringLiteral("Scheda cliente") : QStringLiteral("Scheda fornitore"));
    grdDistinte->setObjectName(QStringLiteral("grdDistinte"));
    grdDistinte->setEditTriggers(QAbstractItemView::NoEditTriggers);
    const auto date = [](const QVariant &value) { return giorno(value); };
    grdDistinte->setColumns({
        {.key = QStringLiteral("GD01_CODICE"), .caption = QStringLiteral("Distinta"), .width = 1500},
        {.key = QStringLiteral("GD01_DESCR"), .caption = QStringLiteral("Descrizione"), .width = 3600},
        {.key = QStringLiteral("CO1A_CODICE"),
         .caption = QStringLiteral("Divisione"),
         .width = 1100,
         .displayText =
             [](const QVariant &value) {
                 const QString code = MODGD_DISTINTA::NvlStringa(value);
                 return code.isEmpty() ? QStringLiteral("Tutte") : code;
             }},
        {.key = QStringLiteral("GD02_DATAINIZIOVAL"),
         .caption = QStringLiteral("Dal"),
         .width = 1300,
         .displayText = date},
        {.key = QStringLiteral("GD02_DATAFINEVAL"),
         .caption = QStringLiteral("Al"),
         .width = 1300,
         .displayText = date},
    });

    auto *fields = new QFormLayout;
    fields->addRow(QStringLiteral("Codice"), txtCodice);
    fields->addRow(QStringLiteral("Ragione sociale"), txtRagioneSociale);
    fields->addRow(QStringLiteral("Indirizzo"), txtIndirizzo);
    fields->addRow(QStringLiteral("Città"), txtCitta);
    fields->addRow(QStringLiteral("Telefono"), txtTelefono);
    fields->addRow(QStringLiteral("Condizioni di pagamento"), txtPagamento);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(fields);
    layout->addWidget(new QLabel(QStringLiteral("Distinte di appartenenza")));
    layout->addWidget(grdDistinte, 1);
}

SubjectCardForm::~SubjectCardForm() = default;

QLineEdit *SubjectCardForm::campo(const QString &name)
{
    auto *field = new QLineEdit(this);
    field->setObjectName(name);
    field->setReadOnly(true);
    return field;
}

void SubjectCardForm::loadForm()
{
    resize(qMax(width(), 640), qMax(height(), 420));
}

bool SubjectCardForm::activateForm()
{
    if (m_soggetto)
        caricaSoggetto();
    return true;
}

void SubjectCardForm::mostraSoggetto(int company, qint64 subjectCode)
{
    m_soggetto = {company, subjectCode};
    if (connection())
        caricaSoggetto();
}

void SubjectCardForm::caricaSoggetto()
{
    const auto [company, code] = *m_soggetto;
    const QString kind = m_subjectKind == 0 ? QStringLiteral("cliente") : QStringLiteral("fornitore");
    setWindowTitle(QStringLiteral("Scheda %1 %2").arg(kind).arg(code));
    step(QStringLiteral("CaricaScheda"), [&] {
        const db::RecordsetPtr subject = connection()->openRecordset(
            schedastatements::subjectQuery(company, m_subjectKind, code));
        if (subject->isEmpty()) {
            avviso(QStringLiteral("Il %1 %2 non esiste nella ditta %3.").arg(kind).arg(code).arg(company));
            return;
        }
        const auto text = [&](const char *field) {
            return MODGD_DISTINTA::NvlStringa(subject->value(QLatin1String(field)));
        };
        txtCodice->setText(text("CG44_CLIFOR"));
        txtRagioneSociale->setText(text("CG16_RAGSOANAG"));
        txtIndirizzo->setText(text("CG16_INDIRIZZO"));
        QString city = QStringList({text("CG16_CAP"), text("CG16_CITTA")}).join(QLatin1Char(' ')).trimmed();
        if (!text("CG16_PROV").isEmpty())
            city += QStringLiteral(" (%1)").arg(text("CG16_PROV"));
        txtCitta->setText(city);
        txtTelefono->setText(text("CG16_TEL1NUM"));
        const QString payment = text("CG44_CODPAG_CG62");
        txtPagamento->setText(payment.isEmpty() ? QString() : payment + QStringLiteral(" - ") + text("CG62_DESCPAG"));

        m_distinte = connection()->openRecordset(schedastatements::listsQuery(company, m_subjectKind, code));
        grdDistinte->setRecordset(m_distinte);
    });
}

void SubjectCardForm::release(Release what)
{
    if (what == Release::GridWrapper)
        grdDistinte->setRecordset(nullptr);
    else if (what == Release::HelperObjects)
        m_distinte.reset();
}
