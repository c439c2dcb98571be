#pragma once

#include <QVariant>

#include <QHash>
#include <QList>
#include <QSize>
#include <QString>
#include <QStringList>
#include <utility>

namespace fw {

// What each user last made of a window: column widths of its grids, the shares of its splitters
// and its size, kept in a settings file of the machine and given back the next time the window
// opens. A missing or unreadable file, or widths saved for another set of columns (an older
// layout), give nothing back, and the designed layout stays.
class LayoutMemory
{
public:
    LayoutMemory(const QString &settingsFile, const QString &user, const QString &window);

    // Widths by column name, for exactly these columns in this order; empty otherwise.
    QHash<QString, int> columnWidths(const QString &grid, const QStringList &columns) const;
    void rememberColumnWidths(const QString &grid, const QList<std::pair<QString, int>> &widths);

    // Shares of the first pane, between 0 and 1 exclusive; empty when never saved.
    QList<double> splitterShares() const;
    void rememberSplitterShares(const QList<double> &shares);

    QSize windowSize() const; // invalid when never saved
    void rememberWindowSize(const QSize &size);

    // finestre.ini in the program's configuration folder of the user's account, or the file
    // named by DISTINTA_LAYOUT_FILE (empty: nothing is kept), for runs that must leave the
    // user's layouts alone.
    static QString defaultSettingsFile();

private:
    // The values of these keys in the window's group, in order; empty when there is no file to
    // read or it cannot be read as settings.
    QVariantList stored(const QStringList &keys) const;
    void store(const QList<std::pair<QString, QVariant>> &values);

    QString m_settingsFile;
    QString m_group;
};

} // namespace fw
