#include "framework/gridnavigator.h"

#include "framework/recordframe.h"
#include "platform/db/recordset.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QToolButton>

namespace fw {

namespace {

const QString procedure = QStringLiteral("GRIDNAV_ButtonClick");

} // namespace

GridNavigator::GridNavigator(QWidget *parent)
    : QWidget(parent)
    , m_modo(new QLabel(this))
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    QStyle *style = QApplication::style();
    addButton(QStringLiteral("primo"), QStringLiteral("Primo"), style->standardIcon(QStyle::SP_MediaSkipBackward));
    addButton(QStringLiteral("precedente"), QStringLiteral("Precedente"),
              style->standardIcon(QStyle::SP_MediaSeekBackward));
    addButton(QStringLiteral("successivo"), QStringLiteral("Successivo"),
              style->standardIcon(QStyle::SP_MediaSeekForward));
    addButton(QStringLiteral("ultimo"), QStringLiteral("Ultimo"), style->standardIcon(QStyle::SP_MediaSkipForward));
    layout->addSpacing(8);
    addButton(QStringLiteral("Nuovo"), QStringLiteral("&Nuovo"));
    addButton(QStringLiteral("Salva"), QStringLiteral("&Salva"));
    addButton(QStringLiteral("Annulla"), QStringLiteral("&Annulla"));
    addButton(QStringLiteral("Elimina"), QStringLiteral("&Elimina"));
    layout->addSpacing(8);
    addButton(QStringLiteral("Stampa"), QStringLiteral("S&tampa"));
    layout->addStretch();
    m_modo->setObjectName(QStringLiteral("lblModo"));
    QFont bold = m_modo->font();
    bold.setBold(true);
    m_modo->setFont(bold);
    layout->addWidget(m_modo);
    updateButtons();
}

GridNavigator::~GridNavigator()
{
    detach();
}

QToolButton *GridNavigator::addButton(const QString &key, const QString &text, const QIcon &icon)
{
    auto *button = new QToolButton(this);
    button->setObjectName(key);
    if (icon.isNull()) {
        button->setText(text);
        button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    } else {
        button->setIcon(icon);
        button->setToolTip(text);
    }
    button->setAutoRaise(false);
    layout()->addWidget(button);
    m_buttons.insert(key, button);
    connect(button, &QToolButton::clicked, this, [this, key] { press(key); });
    return button;
}

void GridNavigator::attach(RecordFrame *frame, Runner runner)
{
    detach();
    m_frame = frame;
    m_runner = std::move(runner);
    if (frame) {
        m_frameConnections << connect(frame, &RecordFrame::ChangeStatus, this, &GridNavigator::updateButtons)
                           << connect(frame, &RecordFrame::rowShown, this,
                                      [this] {
                                          m_rigaEsistente = false;
                                          updateButtons();
                                      })
                           << connect(frame, &RecordFrame::existingRowFound, this,
                                      [this] {
                                          m_rigaEsistente = true;
                                          updateButtons();
                                      })
                           << connect(frame, &RecordFrame::recordsetReplaced, this, &GridNavigator::updateButtons);
    }
    updateButtons();
}

void GridNavigator::detach()
{
    m_rigaEsistente = false;
    for (const auto &connection : std::as_const(m_frameConnections))
        disconnect(connection);
    m_frameConnections.clear();
    m_frame.clear();
    m_runner = nullptr;
    updateButtons();
}

void GridNavigator::setPrintAvailable(bool available)
{
    m_printAvailable = available;
    updateButtons();
}

QToolButton *GridNavigator::button(const QString &key) const
{
    return m_buttons.value(key);
}

void GridNavigator::press(const QString &key)
{
    QToolButton *pressed = button(key);
    if (!pressed || !pressed->isEnabled())
        return;
    bool cancel = false;
    emit ButtonClick(key, cancel);
    if (!cancel && act(key))
        emit AfterButtonClick(key);
    updateButtons();
}

bool GridNavigator::act(const QString &key)
{
    if (!m_frame || !m_runner)
        return false;
    RecordFrame *frame = m_frame;
    bool done = false;
    const bool went = m_runner(procedure, [&] {
        done = false;
        if (key == QLatin1String("Salva"))
            done = frame->update();
        else if (key == QLatin1String("Annulla"))
            frame->undo(), done = true;
        else if (key == QLatin1String("Elimina"))
            done = frame->deleteCurrent();
        else if (key == QLatin1String("Nuovo"))
            done = frame->leaveRow() && (frame->addNew(), true);
        else if (key != QLatin1String("Stampa"))
            done = moveTo(key);
    });
    return went && done;
}

bool GridNavigator::moveTo(const QString &key)
{
    const db::RecordsetPtr rows = m_frame->recordset();
    if (!rows || rows->isEmpty())
        return false;
    const int from = rows->currentRow();
    int to = from;
    if (key == QLatin1String("primo"))
        to = 0;
    else if (key == QLatin1String("ultimo"))
        to = rows->recordCount() - 1;
    else if (key == QLatin1String("precedente"))
        to = qMax(0, from - 1);
    else if (key == QLatin1String("successivo"))
        to = qMin(rows->recordCount() - 1, from + 1);
    if (to == from)
        return false;
    if (!m_frame->leaveRow())
        return false;
    // Leaving a new row drops it, and the rows after it move up by one.
    const db::RecordsetPtr current = m_frame->recordset();
    current->setCurrentRow(qBound(0, to, current->recordCount() - 1));
    return true;
}

void GridNavigator::updateButtons()
{
    const db::RecordsetPtr rows = m_frame ? m_frame->recordset() : nullptr;
    const int count = rows ? rows->recordCount() : 0;
    const int row = rows ? rows->currentRow() : -1;
    const int state = m_frame ? m_frame->state() : RecordFrame::Browse;
    const auto enable = [this](const char *key, bool enabled) {
        m_buttons.value(QLatin1String(key))->setEnabled(enabled);
    };
    enable("primo", count > 0 && row != 0);
    enable("precedente", count > 0 && row > 0);
    enable("successivo", count > 0 && row < count - 1);
    enable("ultimo", count > 0 && row != count - 1);
    enable("Nuovo", m_frame != nullptr);
    enable("Salva", m_frame && state != RecordFrame::Browse);
    enable("Annulla", m_frame && state != RecordFrame::Browse);
    enable("Elimina", m_frame && state == RecordFrame::Browse && row >= 0);
    enable("Stampa", m_printAvailable);
    m_modo->setText(testoModo());
}

QString GridNavigator::testoModo() const
{
    const int state = m_frame ? m_frame->state() : RecordFrame::Browse;
    if (state == RecordFrame::Insert)
        return QStringLiteral("Nuova riga");
    if (state == RecordFrame::Edit)
        return m_rigaEsistente ? QStringLiteral("Riga esistente richiamata, con modifiche non salvate")
                               : QStringLiteral("Modifiche non salvate");
    return m_rigaEsistente ? QStringLiteral("Riga esistente richiamata") : QString();
}

} // namespace fw
