#pragma once

#include "framework/gridcolors.h"
#include "framework/treelist/treelistcolumn.h"
#include "framework/treelist/treelisthooks.h"
#include "framework/treelist/treelistnode.h"
#include "platform/db/recordset.h"

#include <QHash>
#include <QMetaObject>
#include <functional>
#include <QWidget>

class QHelpEvent;

namespace fw {

class ColumnFit;
class TreeListDelegate;
class TreeListModel;
class TreeListView;

// A data-bound tree list: the rows of a recordset shown as a hierarchy by key and parent
// field, in columns under one band, with in-place editors per column kind.
//
// The focused node and the recordset's current row follow each other. Edits are validated
// through validateEdit() and written into the recordset at once (setValue + update); a
// database error is reported by writeFailed() and the cell shows the stored value again.
//
// Expanding or collapsing many nodes: every call is cheap, and the rows are laid out again
// once, at the next event or when a WindowUpdateLock on the tree goes; while one holds the tree
// nothing is painted and the view follows the focused node only at the end.
class TreeList : public QWidget, private TreeListHooks
{
    Q_OBJECT

public:
    explicit TreeList(QWidget *parent = nullptr);
    ~TreeList() override;

    // --- band and columns
    void setBandCaption(const QString &caption);
    QString bandCaption() const;
    void setBandVisible(bool visible);
    int addColumn(const TreeListColumn &column);
    int columnCount() const;
    int columnIndex(const QString &name) const; // case-insensitive; -1 when absent
    const TreeListColumn &column(int index) const;
    void setColumnCaption(const QString &name, const QString &caption);
    void setColumnVisible(const QString &name, bool visible);
    void setColumnReadOnly(const QString &name, bool readOnly);
    void setColumnInPlaceEditor(const QString &name, bool enabled);
    void setColumnAlignment(const QString &name, Qt::Alignment alignment);
    void setColumnDesignWidth(const QString &name, int twips);
    // Fill width: the visible columns share the tree's width in proportion to their design widths.
    void setFillWidth(bool fill);
    bool fillWidth() const;
    // No column is narrower than its heading and a whole value of its kind (its hierarchy lines
    // included); a double click on a heading's edge fits the column to the rows shown.
    int minimumColumnWidth(int index) const;
    void setColumnWidthSample(const QString &name, const QString &sample);
    void fitColumnToContents(int index);
    // The first `count` columns (the code and the name, say) stay at the left edge while the
    // others scroll sideways, unless they would take more than two thirds of the width.
    void setFrozenColumnCount(int count);
    int frozenColumnCount() const;
    // The design widths as they stand (a user's drag changes them), by column name, and back.
    QList<std::pair<QString, int>> designWidths() const;
    void setDesignWidths(const QHash<QString, int> &twipsByName);

    // --- looks (setFont() sets the font of cells and header)
    void setColors(const GridColors &colors);
    const GridColors &colors() const { return m_colors; }
    void setHeaderFont(const QFont &font);

    // --- binding
    void setKeyField(const QString &name);
    QString keyField() const;
    void setParentField(const QString &name);
    QString parentField() const;
    // Builds the hierarchy from the recordset's rows and focuses the node of its current row;
    // nullptr unbinds (no nodes).
    void setRecordset(db::RecordsetPtr recordset);
    db::RecordsetPtr recordset() const;

    // --- nodes
    int count() const;
    TreeListNode firstNode() const;
    TreeListNode nodeAt(int absoluteIndex) const; // by position in tree order
    TreeListNode nodeOfRow(int row) const;
    TreeListNode focusedNode() const;
    // Focusing expands the node's ancestors, scrolls to it and moves the recordset to its row.
    void setFocusedNode(const TreeListNode &node);
    void setFocusedAbsoluteIndex(int absoluteIndex);
    QString focusedColumn() const; // name of the column of the focused cell
    void setFocusedColumn(const QString &name);

    void expand(const TreeListNode &node);   // this node only, not its descendants
    void collapse(const TreeListNode &node); // a focused descendant passes the focus to it
    bool isExpanded(const TreeListNode &node) const;
    void expandAll();
    void collapseAll();
    bool isUpdating() const { return m_updateDepth > 0; }

    QVariant value(const TreeListNode &node, const QString &column) const;
    // Writes a cell through the recordset without the editing signals; false on failure
    // (already reported by writeFailed()).
    bool setValue(const TreeListNode &node, const QString &column, const QVariant &value);
    // The text the cell shows: its own text passed through customDrawCell().
    QString displayText(const TreeListNode &node, const QString &column);
    QRect cellRect(const TreeListNode &node, const QString &column) const; // in this widget
    void editCell(const TreeListNode &node, const QString &column);        // opens its editor
    // Cells of one node that may not be edited now (shown in italics and grey); another call
    // replaces them, an empty list unlocks.
    void setLockedCells(const TreeListNode &node, const QStringList &columns);
    bool isLocked(const TreeListNode &node, const QString &column) const;
    void refresh();

    TreeListView *view() const { return m_view; }
    TreeListModel *model() const { return m_model; }

signals:
    void focusedNodeChanged(const fw::TreeListNode &previous, const fw::TreeListNode &current);
    void editingStarted(const fw::TreeListNode &node, const QString &column, bool &allow);
    void validateEdit(const fw::TreeListNode &node, const QString &column, QVariant &value, bool &accept,
                      QString &error);
    void edited(const fw::TreeListNode &node, const QString &column);
    void editCloseUp(const fw::TreeListNode &node, const QString &column, const QVariant &value);
    void editButtonClicked(const fw::TreeListNode &node, const QString &column);
    // At paint time, for every cell: text holds the cell's own text and may be replaced.
    // Handlers must not query the database: read once per load and cache.
    void customDrawCell(const fw::TreeListNode &node, const QString &column, QString &text);
    void mouseDown(const fw::TreeListNode &node, const QString &column, Qt::MouseButton button, const QPoint &pos);
    void writeFailed(const db::DatabaseError &error);
    // The user asked for the context menu from the keyboard, on the focused node (the right
    // button's press is reported by mouseDown()).
    void contextMenuRequested(const fw::TreeListNode &node, const QPoint &globalPos);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    friend class TreeListNode;
    friend class WindowUpdateLock; // the one way to freeze the tree while it changes
    void beginUpdate();
    void endUpdate();

    // TreeListHooks
    bool startEditing(const QModelIndex &index) override;
    void closeUp(const QModelIndex &index, const QVariant &value) override;
    void commitEdit(const QModelIndex &index, const QVariant &value, bool valid) override;
    QString drawText(const QModelIndex &index, const QString &text) override;
    void buttonClicked(const QModelIndex &index) override;

    TreeListNode handle(int node) const;
    int nodeId(const TreeListNode &node) const; // -1 unless a current node of this tree
    QString columnNameOf(const QModelIndex &index) const;
    void updateColumn(const QString &name, const std::function<void(TreeListColumn &)> &change);
    TreeListDelegate *delegateFor(const TreeListColumn &column) const;
    void showColumn(int index, bool visible);
    void applyColumnWidths();
    void measureDeepestLevel();
    bool showCutText(QHelpEvent *event);

    void focusNode(int node);
    void focusCurrentRow();
    void showFocusInView();
    void revealNode(int node);
    void recordFocus(int node);
    bool moveRecordsetTo(int node);
    void onCurrentChanged(const QModelIndex &current);
    void onRecordsetRowChanged(int row);
    void onCollapsed(const QModelIndex &index);
    void onMousePressed(const QModelIndex &index, Qt::MouseButton button, const QPoint &viewportPos);
    void rememberExpandedNodes();
    void restoreAfterRebuild();

    TreeListModel *m_model;
    TreeListView *m_view;
    TreeListDelegate *m_cellDelegate; // every kind but buttons
    TreeListDelegate *m_buttonDelegate;
    ColumnFit *m_widths;
    QMetaObject::Connection m_rowConnection;
    GridColors m_colors;
    int m_deepestLevel = 0;
    TreeListNode m_focused;
    bool m_movingRecordset = false;
    bool m_focusPending = false;
    int m_updateDepth = 0;
    QList<quint64> m_expandedKeys;
};

} // namespace fw
