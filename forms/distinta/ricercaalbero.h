#pragma once

#include <QObject>

class FormFrame;
class QLineEdit;
class QToolButton;

namespace distinta {

class Albero;

// The search inside the loaded tree, TXTCERCA with CMD_CERCA's choice of field: Enter finds
// the first node by name, the menu by name or by code, F3 the next one by the field of the last
// search (checked in the menu and named by the empty box), starting again from the top past the
// last. A search that finds nothing marks the box (no dialog: the search is meant to be quiet)
// until its text changes.
class RicercaAlbero : public QObject
{
    Q_OBJECT

public:
    enum class Campo { RagioneSociale, Codice };

    RicercaAlbero(FormFrame &form, Albero &albero);

    QLineEdit *casella() const { return TXTCERCA; }
    QToolButton *pulsante() const { return CMD_CERCA; }

    // Always from the first row, so that repeating a search finds the same node.
    void CercaNellaDistinta(Campo campo);
    // The code given, searched as the results of the search across classifications do.
    void cercaCodice(const QString &procedure, const QString &codice);
    void cercaSuccessivo();
    // The two search modes of CMD_CERCA's menu.
    void preparaMenu();
    void aggiornaAbilitazione();
    // Another classification is shown: the text searched in the previous one goes.
    void distintaMostrata(const QString &chiave);

private:
    void TXTCERCA_KeyDown();
    void CMD_CERCA_ButtonMenuClick(const QString &key);
    void segnalaRicercaSenzaEsito(bool senzaEsito);
    void mostraCampoRicerca();

    FormFrame &m_form;
    Albero &m_albero;
    QLineEdit *TXTCERCA;
    QToolButton *CMD_CERCA;
    Campo m_campoRicerca = Campo::RagioneSociale; // the field of the last search
    QString m_chiaveDistinta;
};

} // namespace distinta
