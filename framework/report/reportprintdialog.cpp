#include "framework/report/reportprintdialog.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace fw {

namespace {

template<typename Control>
Control *named(Control *control, const QString &name)
{
    control->setObjectName(name);
    return control;
}

} // namespace

ReportPrintDialog::ReportPrintDialog(const QString &reportTitle, const ReportPrintChoice &proposed, QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("FRM_STAMPA"));
    setWindowTitle(reportTitle.isEmpty() ? QStringLiteral("Stampa") : QStringLiteral("Stampa - ") + reportTitle);

    TXT_ESEGUITODA = named(new QLineEdit(proposed.printedBy), QStringLiteral("TXT_ESEGUITODA"));
    TXT_DESTINATOA = named(new QLineEdit(proposed.printedFor), QStringLiteral("TXT_DESTINATOA"));
    TXT_NOTE = named(new QLineEdit(proposed.notes), QStringLiteral("TXT_NOTE"));
    TXT_ESEGUITODA->setMinimumWidth(320);
    auto *texts = new QFormLayout;
    texts->addRow(QStringLiteral("Eseguito da"), TXT_ESEGUITODA);
    texts->addRow(QStringLiteral("Destinato a"), TXT_DESTINATOA);
    texts->addRow(QStringLiteral("Note"), TXT_NOTE);

    OPT_ANTEPRIMA = named(new QRadioButton(QStringLiteral("Anteprima")), QStringLiteral("OPT_ANTEPRIMA"));
    OPT_STAMPANTE = named(new QRadioButton(QStringLiteral("Stampante")), QStringLiteral("OPT_STAMPANTE"));
    OPT_PDF = named(new QRadioButton(QStringLiteral("File PDF")), QStringLiteral("OPT_PDF"));
    TXT_FILEPDF = named(new QLineEdit(proposed.pdfPath), QStringLiteral("TXT_FILEPDF"));
    CMD_SFOGLIA = named(new QPushButton(QStringLiteral("Sfoglia...")), QStringLiteral("CMD_SFOGLIA"));
    switch (proposed.mode) {
    case ReportEngine::RunMode::Print: OPT_STAMPANTE->setChecked(true); break;
    case ReportEngine::RunMode::Pdf: OPT_PDF->setChecked(true); break;
    case ReportEngine::RunMode::Preview: OPT_ANTEPRIMA->setChecked(true); break;
    }
    auto *file = new QHBoxLayout;
    file->addWidget(OPT_PDF);
    file->addWidget(TXT_FILEPDF, 1);
    file->addWidget(CMD_SFOGLIA);
    auto *destinations = new QVBoxLayout;
    destinations->addWidget(OPT_ANTEPRIMA);
    destinations->addWidget(OPT_STAMPANTE);
    destinations->addLayout(file);
    auto *destination = new QGroupBox(QStringLiteral("Destinazione"));
    destination->setLayout(destinations);

    auto *buttons = new QDialogButtonBox;
    CMD_OK = named(buttons->addButton(QStringLiteral("Stampa"), QDialogButtonBox::AcceptRole),
                   QStringLiteral("CMD_OK"));
    named(buttons->addButton(QStringLiteral("Annulla"), QDialogButtonBox::RejectRole), QStringLiteral("CMD_ANNULLA"));
    CMD_OK->setDefault(true);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(texts);
    layout->addWidget(destination);
    layout->addWidget(buttons);

    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    for (QRadioButton *option : {OPT_ANTEPRIMA, OPT_STAMPANTE, OPT_PDF})
        connect(option, &QRadioButton::toggled, this, &ReportPrintDialog::updateControls);
    connect(TXT_FILEPDF, &QLineEdit::textChanged, this, &ReportPrintDialog::updateControls);
    connect(CMD_SFOGLIA, &QPushButton::clicked, this, &ReportPrintDialog::chooseFile);
    updateControls();
}

ReportPrintChoice ReportPrintDialog::choice() const
{
    ReportPrintChoice choice;
    choice.printedBy = TXT_ESEGUITODA->text().trimmed();
    choice.printedFor = TXT_DESTINATOA->text().trimmed();
    choice.notes = TXT_NOTE->text().trimmed();
    choice.mode = OPT_PDF->isChecked() ? ReportEngine::RunMode::Pdf
        : OPT_STAMPANTE->isChecked()   ? ReportEngine::RunMode::Print
                                       : ReportEngine::RunMode::Preview;
    choice.pdfPath = TXT_FILEPDF->text().trimmed();
    return choice;
}

void ReportPrintDialog::accept()
{
    const ReportPrintChoice chosen = choice();
    if (chosen.mode == ReportEngine::RunMode::Pdf && chosen.pdfPath != m_replaceConfirmed
        && QFileInfo::exists(chosen.pdfPath)) {
        QMessageBox question(
            QMessageBox::Question, windowTitle(),
            QStringLiteral("Il file \"%1\" esiste già. Sostituirlo?").arg(QDir::toNativeSeparators(chosen.pdfPath)),
            QMessageBox::Yes | QMessageBox::No, this);
        question.setObjectName(QStringLiteral("dlgSostituisciFile"));
        question.setDefaultButton(QMessageBox::No);
        question.button(QMessageBox::Yes)->setText(QStringLiteral("&Sì"));
        question.button(QMessageBox::No)->setText(QStringLiteral("&No"));
        if (question.exec() != QMessageBox::Yes) {
            TXT_FILEPDF->setFocus();
            return;
        }
    }
    QDialog::accept();
}

void ReportPrintDialog::updateControls()
{
    const bool pdf = OPT_PDF->isChecked();
    TXT_FILEPDF->setEnabled(pdf);
    CMD_SFOGLIA->setEnabled(pdf);
    CMD_OK->setEnabled(!pdf || !TXT_FILEPDF->text().trimmed().isEmpty());
}

void ReportPrintDialog::chooseFile()
{
    QString path = QFileDialog::getSaveFileName(this, QStringLiteral("Salva la stampa in PDF"), TXT_FILEPDF->text(),
                                                QStringLiteral("Documenti PDF (*.pdf)"));
    if (path.isEmpty())
        return;
    if (!path.endsWith(QLatin1String(".pdf"), Qt::CaseInsensitive))
        path += QStringLiteral(".pdf");
    TXT_FILEPDF->setText(path);
    m_replaceConfirmed = path;
}

} // namespace fw
