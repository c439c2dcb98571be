#pragma once

#include <QHash>
#include <QPointer>
#include <QWidget>
#include <functional>

class QLabel;
class QToolButton;

namespace fw {

class RecordFrame;

// The bar that moves a record frame through its rows ("primo", "precedente", "successivo",
// "ultimo") and acts on them ("Nuovo", "Salva", "Annulla", "Elimina", "Stampa"). Before its own
// action the bar raises ButtonClick, whose handler may cancel it (the form prints instead);
// after an action that went through it raises AfterButtonClick.
//
// Its mode line (lblModo) says what the frame holds: a new row, pending changes, or a saved row
// that a key typed on a new row called up in its place.
//
// A row with pending changes is saved (through the frame's events) before the bar leaves it.
// Every action runs through the form's runner, so that failures reach the form's error handler.
class GridNavigator : public QWidget
{
    Q_OBJECT

public:
    // Runs one statement of a procedure; false leaves the action (as FormFrame::step does).
    using Runner = std::function<bool(const QString &procedure, const std::function<void()> &statement)>;

    explicit GridNavigator(QWidget *parent = nullptr);
    ~GridNavigator() override;

    void attach(RecordFrame *frame, Runner runner);
    void detach();

    // "Stampa" acts only when the form can print.
    void setPrintAvailable(bool available);

    QToolButton *button(const QString &key) const;
    // A press of the button, as the user's click.
    void press(const QString &key);
    void updateButtons();

signals:
    void ButtonClick(const QString &button, bool &cancel);
    void AfterButtonClick(const QString &button);

private:
    // A button with the icon and text as its tooltip, or without an icon, with text as its caption.
    QToolButton *addButton(const QString &key, const QString &text, const QIcon &icon = {});
    bool act(const QString &key);
    bool moveTo(const QString &key);
    QString testoModo() const;

    QPointer<RecordFrame> m_frame;
    Runner m_runner;
    QHash<QString, QToolButton *> m_buttons;
    QLabel *m_modo;
    bool m_rigaEsistente = false; // the row shown was called up from a new row
    QList<QMetaObject::Connection> m_frameConnections;
    bool m_printAvailable = false;
};

} // namespace fw
