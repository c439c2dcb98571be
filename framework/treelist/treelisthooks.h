#pragma once

#include <QString>
#include <QVariant>

class QModelIndex;

namespace fw {

// What the delegates of a tree list ask of the tree that owns them: the tree turns these
// calls into its public signals and writes accepted values through its model.
class TreeListHooks
{
public:
    virtual ~TreeListHooks() = default;

    // The user starts editing a cell; false keeps the editor closed.
    virtual bool startEditing(const QModelIndex &index) = 0;
    // A drop-down of the cell's editor closed on a choice.
    virtual void closeUp(const QModelIndex &index, const QVariant &value) = 0;
    // The editor's value is to be stored; valid is the editor's own verdict on it.
    virtual void commitEdit(const QModelIndex &index, const QVariant &value, bool valid) = 0;
    // The text to paint in a cell whose own text is given.
    virtual QString drawText(const QModelIndex &index, const QString &text) = 0;
    virtual void buttonClicked(const QModelIndex &index) = 0;
};

} // namespace fw
