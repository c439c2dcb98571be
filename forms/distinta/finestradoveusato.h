#pragma once

#include "forms/distinta/doveusato.h"

#include <QPointer>
#include <QWidget>

class QTableWidget;

namespace fw {
class EmptyViewHint;
}

namespace distinta {

// "Dove è usato": the links of a subject in every classification of the company, in a window of
// its own beside the editor. A double click or Enter on a line asks the editor for its node.
// Read-only; it shows the lines it is given.
class FinestraDoveUsato : public QWidget
{
    Q_OBJECT

public:
    // title: the subject's code and business name.
    FinestraDoveUsato(QWidget &editor, const QString &title, const QList<Uso> &usi);
    ~FinestraDoveUsato() override;

    const QList<Uso> &usi() const { return m_usi; }
    QTableWidget *griglia() const { return GRD_DOVEUSATO; }

signals:
    void nodoRichiesto(const QString &chiaveTipo, qint64 idNodo);

private:
    void richiedi(int row);

    QTableWidget *GRD_DOVEUSATO;
    QList<Uso> m_usi;
    QPointer<fw::EmptyViewHint> m_vuoto; // goes before the grid, whose teardown it would watch
};

} // namespace distinta
