#pragma once

#include <QObject>
#include <QPointer>
#include <functional>

class QAbstractItemView;
class QLabel;

namespace fw {

// One short line in the middle of a view that shows no rows, saying what to do next. The text
// is asked for each time the view becomes empty, so that it can follow the state of the form.
class EmptyViewHint : public QObject
{
    Q_OBJECT

public:
    EmptyViewHint(QAbstractItemView *view, std::function<QString()> text);

    // Shows or hides the line as the view's rows are now; called by the model's signals and
    // by the form when what the text depends on changes.
    void refresh();
    QString shownText() const; // empty while hidden
    QLabel *label() const { return m_label; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void watchModel();

    QPointer<QAbstractItemView> m_view;
    std::function<QString()> m_text;
    QLabel *m_label;
    QList<QMetaObject::Connection> m_connections;
    QPointer<QObject> m_model;
};

} // namespace fw
