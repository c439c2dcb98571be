#pragma once

#include <QObject>
#include <QString>

class FormFrame;
class QTreeWidget;
class QTreeWidgetItem;

namespace distinta {

// The selector of classification types, TVW_SELDISTINTE: every type of the company under
// "Clienti" ("P0") and "Fornitori" ("P1"), keyed "C" or "F" followed by the type's GD01_ID.
class Selettore : public QObject
{
    Q_OBJECT

public:
    explicit Selettore(FormFrame &form);

    QTreeWidget *widget() const { return TVW_SELDISTINTE; }

    // Clears and fills the selector, the second node in insertion order chosen (the first
    // customer type, or "Fornitori" when there is none). False when a read failed.
    bool costruisci();
    QString chiaveSelezionata() const;
    // A type is chosen, not one of the two roots.
    bool distintaScelta() const;
    QString testoSelezionato() const;
    // The chosen type's GD01_CODICE and GD01_DESCR; empty without a type.
    QString codiceSelezionato() const;
    QString descrizioneSelezionata() const;
    // The subject kind of the chosen type's root: 0 customers, 1 suppliers; -1 without a type.
    int tipoDellaRadice() const;
    int contaNodi() const;
    // Chooses the node of a key, or of a text; false when there is none.
    bool scegli(const QString &chiave);
    bool scegliPerTesto(const QString &testo);
    // The key of the type of that code in the company: "C" or "F" and its id; empty when the
    // company has no such type. Throws db::DatabaseError.
    QString chiaveDelCodice(const QString &codice) const;
    // The key of a type of that subject kind.
    static QString chiaveDelTipo(int subjectKind, qint64 typeId);

signals:
    // The user chose a node (a click, or Enter where a click does not choose).
    void sceltaDallUtente();

private:
    static constexpr int RuoloCodice = Qt::UserRole + 1;
    static constexpr int RuoloDescrizione = Qt::UserRole + 2;

    QTreeWidgetItem *voce(const QString &chiave) const;
    QTreeWidgetItem *aggiungiRadice(const QString &key, const QString &text);
    void aggiungiTipi(QTreeWidgetItem *root, int subjectKind);

    FormFrame &m_form;
    QTreeWidget *TVW_SELDISTINTE;
};

} // namespace distinta
