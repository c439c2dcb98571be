#pragma once

#include <QObject>

class FormFrame;
class QComboBox;
class QPushButton;
class QString;

namespace fw {
class TreeList;
}

namespace distinta {

// Levels of the tree: the level combo CMB_LIVELLO, and CMD_ESPANDICOLLASSA, which expands or
// collapses one level at a time. The button's caption says what its next click does, and is
// read back to know it.
class Livelli : public QObject
{
    Q_OBJECT

public:
    Livelli(FormFrame &form, fw::TreeList *albero);

    QComboBox *combo() const { return CMB_LIVELLO; }
    QPushButton *pulsante() const { return CMD_ESPANDICOLLASSA; }

    void CaricaLivelli();
    void CMD_ESPANDICOLLASSA_Click();
    // The caption before a classification is loaded, and the combo emptied with the tree.
    void preparaCaricamento();
    void svuota();
    // The level chosen in the combo, as its text ("3° livello").
    QString testoLivello() const;
    int livelloMassimo() const { return m_livelloMassimo; }
    int livelloCorrente() const { return m_livelloCorrente; }
    // What cannot act on an empty tree is disabled.
    void aggiornaAbilitazione();

    // The levels below the value a level text begins with plus one: an empty text or "0" the
    // roots only, "2" the levels 0, 1 and 2. A 16-bit number: a larger one overflows.
    static short limite(const QString &testoLivello);
    // The number a level text begins with ("3° livello": 3); 0 when there is none.
    static qint64 numeroIniziale(const QString &testo);

private:
    void espandiLivello();
    void comprimiLivello();

    FormFrame &m_form;
    fw::TreeList *m_albero;
    QComboBox *CMB_LIVELLO;
    QPushButton *CMD_ESPANDICOLLASSA;
    int m_livelloMassimo = 0;
    int m_livelloCorrente = 0;
};

} // namespace distinta
