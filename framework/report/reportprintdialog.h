#pragma once

#include "framework/report/reportprintchoice.h"

#include <QDialog>

class QDialogButtonBox;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace fw {

// The report engine's print dialog: who runs the print, who it is for, notes, and where it goes
// (preview, a printer, a PDF file). The PDF file's name can be typed only when the PDF is chosen,
// and the dialog cannot be confirmed for a PDF without one.
class ReportPrintDialog : public QDialog
{
    Q_OBJECT

public:
    ReportPrintDialog(const QString &reportTitle, const ReportPrintChoice &proposed, QWidget *parent = nullptr);

    ReportPrintChoice choice() const;

    // A PDF file that is there already is replaced only after a question (default No), unless
    // it was chosen through the file dialog, which has asked.
    void accept() override;

private:
    void updateControls();
    void chooseFile();

    QLineEdit *TXT_ESEGUITODA;
    QLineEdit *TXT_DESTINATOA;
    QLineEdit *TXT_NOTE;
    QRadioButton *OPT_ANTEPRIMA;
    QRadioButton *OPT_STAMPANTE;
    QRadioButton *OPT_PDF;
    QLineEdit *TXT_FILEPDF;
    QPushButton *CMD_SFOGLIA;
    QPushButton *CMD_OK;
    QString m_replaceConfirmed; // the file the file dialog was told to replace
};

} // namespace fw
