#pragma once

#include <QObject>

class FormFrame;
class QLayout;
class QPushButton;
class StrutturaNodi;

namespace distinta {

class Albero;

// Moving a branch: a node, with everything under it, goes under another node of the same
// classification or becomes a root, by drag and drop or by cut (Ctrl+X) and paste (Ctrl+V,
// Ctrl+Maiusc+V for a root). The checks run on the classification's rows in memory; the move
// itself is one UPDATE of the node's parent, so ids, dates, billing rules, promotions and states
// of the branch stay as they are.
class Spostamento : public QObject
{
    Q_OBJECT

public:
    Spostamento(FormFrame &form, Albero &albero);

    QLayout *creaComandi();
    qint64 nodoTagliato() const { return m_nodoTagliato; }

    // idDestinazione 0: the node becomes a root. True when the branch moved.
    bool SpostaNodo(qint64 idNodo, qint64 idDestinazione);
    void CMD_TAGLIANODO_Click();
    void CMD_INCOLLANODO_Click();
    void incollaComeCapostipite();

private:
    void impostaTagliato(qint64 idNodo);
    void aggiornaComandi();
    QString nomeNodo(const StrutturaNodi &struttura, int indice) const;
    bool confermaPremiDefinitivi(const StrutturaNodi &struttura, const QList<int> &ramo);
    void mostraNodoSpostato(qint64 idNodo, qint64 idPadre);

    FormFrame &m_form;
    Albero &m_albero;
    QPushButton *CMD_TAGLIANODO;
    QPushButton *CMD_INCOLLANODO;
    qint64 m_nodoTagliato = 0;
};

} // namespace distinta
