#pragma once

#include "forms/distinta/letturastorico.h"

#include <QAbstractTableModel>

namespace distinta {

// The lines of a history as a table: when, who, which operation, where, and what changed, said
// as a sentence. The model owns its lines; a view shows them and reads a line back by its row.
class ModelloStorico : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Colonna { DataOra, Utente, Operazione, Distinta, Soggetto, Modifica, Colonne };

    using QAbstractTableModel::QAbstractTableModel;

    void imposta(QList<VoceStorico> voci);
    const QList<VoceStorico> &voci() const { return m_voci; }
    const VoceStorico *voce(int row) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    QList<VoceStorico> m_voci;
};

} // namespace distinta
