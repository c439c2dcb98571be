#include "framework/elidedlabel.h"

#include <QEvent>

namespace fw {

ElidedLabel::ElidedLabel(const QString &text, QWidget *parent)
    : QLabel(parent)
{
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    setFullText(text);
}

void ElidedLabel::setFullText(const QString &text)
{
    m_fullText = text;
    elide();
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {fontMetrics().horizontalAdvance(QStringLiteral("……")), QLabel::minimumSizeHint().height()};
}

void ElidedLabel::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    elide();
}

void ElidedLabel::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        elide();
}

void ElidedLabel::elide()
{
    const QString shown = fontMetrics().elidedText(m_fullText, Qt::ElideMiddle, contentsRect().width());
    if (shown != text())
        setText(shown);
    setToolTip(shown == m_fullText ? QString() : m_fullText);
}

} // namespace fw
