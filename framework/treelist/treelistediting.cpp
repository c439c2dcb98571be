#include "framework/treelist/treelist.h"

#include "framework/treelist/treelistmodel.h"
#include "framework/treelist/treelistview.h"

#include <QDateTime>
#include <QToolTip>

// Editing in a tree list's cells: what the delegates report becomes the public signals, and
// accepted values are written through the model.

namespace fw {

// --- TreeListHooks: the delegates' calls become the public signals

bool TreeList::startEditing(const QModelIndex &index)
{
    bool allow = true;
    emit editingStarted(handle(m_model->nodeOf(index)), columnNameOf(index), allow);
    return allow;
}

void TreeList::closeUp(const QModelIndex &index, const QVariant &value)
{
    emit editCloseUp(handle(m_model->nodeOf(index)), columnNameOf(index), value);
}

namespace {

bool sameValue(const QVariant &stored, const QVariant &edited, TreeListColumnKind kind)
{
    if (stored.isNull() || edited.isNull())
        return stored.isNull() && edited.isNull();
    if (kind == TreeListColumnKind::Date)
        return stored.toDateTime().date() == edited.toDate();
    if (kind == TreeListColumnKind::ImageCombo) {
        bool okStored = false;
        bool okEdited = false;
        const qint64 a = stored.toLongLong(&okStored);
        const qint64 b = edited.toLongLong(&okEdited);
        if (okStored && okEdited)
            return a == b;
    }
    return stored.toString() == edited.toString();
}

} // namespace

void TreeList::commitEdit(const QModelIndex &index, const QVariant &value, bool valid)
{
    const int node = m_model->nodeOf(index);
    if (node < 0)
        return;
    const TreeListColumn &target = column(index.column());
    if (sameValue(m_model->value(node, index.column()), value, target.kind))
        return;
    const TreeListNode editedNode = handle(node);
    QVariant accepted = value;
    bool accept = valid;
    QString error = valid ? QString() : tr("Valore non valido");
    emit validateEdit(editedNode, target.name, accepted, accept, error);
    if (!accept) {
        if (!error.isEmpty())
            QToolTip::showText(m_view->viewport()->mapToGlobal(m_view->visualRect(index).bottomLeft()), error, m_view);
        return;
    }
    if (m_model->writeValue(node, index.column(), accepted))
        emit edited(editedNode, target.name);
}

QString TreeList::drawText(const QModelIndex &index, const QString &text)
{
    QString shown = text;
    emit customDrawCell(handle(m_model->nodeOf(index)), columnNameOf(index), shown);
    return shown;
}

void TreeList::buttonClicked(const QModelIndex &index)
{
    emit editButtonClicked(handle(m_model->nodeOf(index)), columnNameOf(index));
}

} // namespace fw
