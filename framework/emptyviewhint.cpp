#include "framework/emptyviewhint.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QLabel>

namespace fw {

EmptyViewHint::EmptyViewHint(QAbstractItemView *view, std::function<QString()> text)
    : QObject(view)
    , m_view(view)
    , m_text(std::move(text))
    , m_label(new QLabel(view->viewport()))
{
    m_label->setObjectName(view->objectName() + QStringLiteral("_vuoto"));
    m_label->setAlignment(Qt::AlignCenter);
    m_label->setWordWrap(true);
    m_label->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_label->setForegroundRole(QPalette::PlaceholderText);
    m_label->hide();
    view->viewport()->installEventFilter(this);
    watchModel();
    refresh();
}

void EmptyViewHint::watchModel()
{
    for (const QMetaObject::Connection &connection : std::as_const(m_connections))
        disconnect(connection);
    m_connections.clear();
    QAbstractItemModel *model = m_view ? m_view->model() : nullptr;
    m_model = model;
    if (!model)
        return;
    // At once, not queued: a picture or a test taken right after a load must not find the line
    // of the empty state over the rows just read.
    m_connections << connect(model, &QAbstractItemModel::modelReset, this, &EmptyViewHint::refresh)
                  << connect(model, &QAbstractItemModel::rowsInserted, this, &EmptyViewHint::refresh)
                  << connect(model, &QAbstractItemModel::rowsRemoved, this, &EmptyViewHint::refresh)
                  << connect(model, &QAbstractItemModel::layoutChanged, this, &EmptyViewHint::refresh);
}

void EmptyViewHint::refresh()
{
    if (!m_view)
        return;
    if (m_view->model() != m_model)
        watchModel();
    const bool empty = !m_view->model() || m_view->model()->rowCount(m_view->rootIndex()) == 0;
    const QString text = empty && m_text ? m_text() : QString();
    if (text.isEmpty()) {
        m_label->hide();
        return;
    }
    m_label->setText(text);
    m_label->setGeometry(m_view->viewport()->rect().adjusted(12, 12, -12, -12));
    m_label->show();
}

QString EmptyViewHint::shownText() const
{
    return m_label->isVisibleTo(m_view ? m_view->viewport() : nullptr) ? m_label->text() : QString();
}

bool EmptyViewHint::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize && m_view && watched == m_view->viewport())
        m_label->setGeometry(m_view->viewport()->rect().adjusted(12, 12, -12, -12));
    return QObject::eventFilter(watched, event);
}

} // namespace fw
