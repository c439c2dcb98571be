#pragma once

#include "forms/distinta/propagazione.h"

#include <QObject>

class FormFrame;
class QAction;
class QMenu;
class QPoint;

namespace fw {
class TreeListNode;
}

namespace distinta {

class Albero;
class Gestioni;
class StatoLegame;

// The tree's context menu, mnuCollegamento: the subject's master data and card, the billing
// values and the link state pushed down the branch. The right button on a node opens it, as does
// the keyboard's menu key on the focused node; what the commands need of the node is taken as it
// opens. Commands that cannot act on that node are disabled.
class MenuNodo : public QObject
{
    Q_OBJECT

public:
    MenuNodo(FormFrame &form, Albero &albero, StatoLegame &stato, Gestioni &gestioni);

    void mnuAnagCF_Click();
    void mnuSchedaCF_Click();
    void mnuPropagaFigli_Click();
    void mnuRilasciaFigli_Click();

signals:
    // "Dove è usato" on the node's subject.
    void doveUsatoRichiesto(int subjectKind, qint64 subjectCode);

private:
    void TVW_DISTINTA_OnMouseDown(const fw::TreeListNode &node, const QString &column, Qt::MouseButton button,
                                  const QPoint &pos);
    void apriMenuCollegamento(const fw::TreeListNode &node, const QPoint &globalPos);

    FormFrame &m_form;
    Albero &m_albero;
    StatoLegame &m_stato;
    Gestioni &m_gestioni;
    Propagazione m_propagazione;
    QMenu *mnuCollegamento;
    QAction *mnuAnagCF;
    QAction *mnuSchedaCF;
    QAction *mnuPropagaFigli;
    QMenu *mnuStatoLegame;
    QAction *mnuRilasciaFigli;
    QAction *mnuDoveUsato;
    NodoCliccato m_cliccato;
};

} // namespace distinta
