#include "framework/treelist/treelistnodemover.h"

#include "framework/treelist/treelist.h"
#include "framework/treelist/treelistmodel.h"
#include "framework/treelist/treelistview.h"

#include <QApplication>
#include <QDrag>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>

namespace fw {

TreeListNodeMover::TreeListNodeMover(TreeList *tree)
    : QObject(tree)
    , m_tree(tree)
    , m_view(tree->view())
    , m_viewport(tree->view()->viewport())
{
    m_view->setAcceptDrops(true);
    m_viewport->setAcceptDrops(true);
    m_viewport->installEventFilter(this);
    m_view->installEventFilter(this);
    // The view lives on into the tree's teardown and sends its last events (losing the focus,
    // hiding) while the tree is only half there: the mover stops listening as soon as it starts.
    connect(tree, &QObject::destroyed, this, &TreeListNodeMover::stopWatching);
}

// The tree emits destroyed() before its children, the view among them, go; from then on it may
// not be asked anything.
void TreeListNodeMover::stopWatching()
{
    m_viewport->removeEventFilter(this);
    m_view->removeEventFilter(this);
}

// Ctrl+X, Ctrl+V and Ctrl+Shift+V: claimed at the shortcut stage, acted on at the key press.
bool TreeListNodeMover::keyEvent(QEvent *event)
{
    auto *key = static_cast<QKeyEvent *>(event);
    const bool cut = key->matches(QKeySequence::Cut);
    const bool paste = key->matches(QKeySequence::Paste);
    const bool pasteAsRoot = key->keyCombination()
        == QKeyCombination(Qt::ControlModifier | Qt::ShiftModifier, Qt::Key_V);
    if (!(cut || paste || pasteAsRoot))
        return false;
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    if (cut)
        emit cutRequested();
    else
        emit pasteRequested(pasteAsRoot);
    return true;
}

QByteArray TreeListNodeMover::identity() const
{
    return QByteArray::number(QCoreApplication::applicationPid()) + ':' + QByteArray::number(quintptr(m_tree));
}

QMimeData *TreeListNodeMover::mimeDataFor(const TreeListNode &node) const
{
    auto *data = new QMimeData;
    data->setData(QString::fromLatin1(MimeType), identity() + ':' + QByteArray::number(node.id()));
    return data;
}

TreeListNode TreeListNodeMover::nodeAt(const QPoint &viewportPos) const
{
    const QModelIndex index = m_view->indexAt(viewportPos);
    return index.isValid() ? m_tree->nodeAt(m_tree->model()->nodeOf(index)) : TreeListNode();
}

bool TreeListNodeMover::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_view) {
        const bool key = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
        // An open cell editor has the focus and gets its keys itself.
        return key && keyEvent(event);
    }
    if (watched != m_viewport)
        return false;
    switch (event->type()) {
    case QEvent::MouseButtonPress: {
        auto *mouse = static_cast<QMouseEvent *>(event);
        m_pressed = mouse->button() == Qt::LeftButton ? nodeAt(mouse->position().toPoint()) : TreeListNode();
        m_pressPos = mouse->position().toPoint();
        return false;
    }
    case QEvent::MouseButtonRelease: m_pressed = {}; return false;
    case QEvent::MouseMove: {
        auto *mouse = static_cast<QMouseEvent *>(event);
        if (!m_pressed.isValid() || !(mouse->buttons() & Qt::LeftButton)
            || (mouse->position().toPoint() - m_pressPos).manhattanLength() < QApplication::startDragDistance())
            return false;
        startDrag();
        return true;
    }
    case QEvent::DragEnter:
    case QEvent::DragMove: {
        auto *drag = static_cast<QDragMoveEvent *>(event);
        if (!drag->mimeData()->hasFormat(QString::fromLatin1(MimeType)))
            return false;
        drag->acceptProposedAction();
        return true;
    }
    case QEvent::Drop: {
        auto *drop = static_cast<QDropEvent *>(event);
        if (!dropAt(drop->mimeData(), drop->position().toPoint()))
            return false;
        drop->acceptProposedAction();
        return true;
    }
    default: return false;
    }
}

bool TreeListNodeMover::dropAt(const QMimeData *data, const QPoint &viewportPos)
{
    const QByteArray payload = data ? data->data(QString::fromLatin1(MimeType)) : QByteArray();
    if (payload.isEmpty())
        return false;
    const qsizetype cut = payload.lastIndexOf(':');
    if (payload.left(cut) != identity()) {
        emit foreignNodeDropped();
        return true;
    }
    const TreeListNode node = m_tree->nodeAt(payload.mid(cut + 1).toInt());
    if (node.isValid())
        emit moveRequested(node, nodeAt(viewportPos));
    return true;
}

void TreeListNodeMover::startDrag()
{
    m_dragged = m_pressed;
    m_pressed = {};
    auto *drag = new QDrag(m_view);
    drag->setMimeData(mimeDataFor(m_dragged));
    drag->exec(Qt::MoveAction);
    m_dragged = {};
}

} // namespace fw
