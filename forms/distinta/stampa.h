#pragma once

#include <QObject>
#include <memory>

class FormFrame;
class QPushButton;

namespace fw {
class ReportEngine;
}

namespace distinta {

class Albero;
class Selettore;

// Printing the loaded classification: its nodes down to the chosen level go, in tree order,
// into the work table GD04_STDISTINTA under the key of this workstation and user; the host's
// report engine then prints "VRAX_DISTINTA.rpt" over those rows, with who printed it, for whom,
// the notes and the level in its header.
class Stampa : public QObject
{
    Q_OBJECT

public:
    Stampa(FormFrame &form, Albero &albero, Selettore &selettore);
    ~Stampa() override;

    QPushButton *pulsante() const { return CMD_STAMPA; }

    void CMD_STAMPA_Click();
    bool StampaDistinta(const QString &testoLivello); // true when the report ran
    bool preparaStampa(const QString &testoLivello);  // its first part: the work rows
    bool PulisciStampa();
    bool InvocaStampa();
    QString chiaveStampa() const { return m_chiaveStampa; }
    // The names are read into buffers of 100 characters, the last one for the terminator.
    static QString NomeComputer();
    static QString NomeUtente();
    // The engine of the last print, while it lives; released with the form.
    void rilascia();

private:
    bool scriviRigheStampa(short limite);
    void PclsReport_BeforePrintReport();
    void PreparaLimiti();
    void PreparaNote();

    FormFrame &m_form;
    Albero &m_albero;
    Selettore &m_selettore;
    QPushButton *CMD_STAMPA;
    std::unique_ptr<fw::ReportEngine> PclsReport;
    QString m_chiaveStampa;
    QString m_livelloStampa;
};

} // namespace distinta
