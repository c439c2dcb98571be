#pragma once

#include "forms/distinta/frmgd_distinta.h"
#include "forms/distinta/parti.h"
#include "framework/elidedlabel.h"
#include "framework/recordsetgrid.h"
#include "framework/treelist/treelist.h"
#include "module/clsgd_distinta.h"
#include "tests/support/scriptedhost.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QtTest>
#include <optional>

// What a test node has besides its type, kind and subject code.
struct Nodo
{
    std::optional<qint64> parent;
    std::optional<qint64> billingCode;
    std::optional<qint64> structurePriority;
    int company = 1;
    QString start = QStringLiteral("2024-01-01");
    QString end = QStringLiteral("2099-12-31");
    std::optional<int> billingRule;
};

// The editor on a fresh database holding only the rows a test writes: subjects, classification
// types and nodes of company 1 (unless told otherwise), opened through the scripted host and
// driven through its controls' names.
class DistintaFixture
{
public:
    explicit DistintaFixture(TestDatabase::Content content = TestDatabase::SchemaOnly)
        : host(content)
        , entry(host.createEntryClass())
    { }
    ~DistintaFixture() { delete form; }

    void exec(const QString &sql) { host.database().connection()->execute(sql); }
    QVariant scalar(const QString &sql) { return host.database().scalar(sql); }

    void soggetto(int kind, int code, const QString &name, const QString &payment = {}, int company = 1)
    {
        const int general = ++m_generalCodes;
        exec(QStringLiteral("INSERT INTO CG16_ANAGGEN (CG16_CODICE, CG16_RAGSOANAG, CG16_CITTA, CG16_PROV) "
                            "VALUES (%1, '%2', 'Verona', 'VR')")
                 .arg(general)
                 .arg(QString(name).replace(QLatin1Char('\''), QLatin1String("''"))));
        exec(QStringLiteral("INSERT INTO CG44_CLIFOR (CG44_DITTA_CG18, CG44_TIPOCF, CG44_CLIFOR, CG44_CODICE_CG16, "
                            "CG44_CODPAG_CG62) VALUES (%1, %2, %3, %4, %5)")
                 .arg(company)
                 .arg(kind)
                 .arg(code)
                 .arg(general)
                 .arg(payment.isEmpty() ? QStringLiteral("NULL") : QLatin1Char('\'') + payment + QLatin1Char('\'')));
    }

    qint64 tipo(int kind, const QString &code, const QString &description, std::optional<qint64> division = {})
    {
        exec(QStringLiteral("INSERT INTO GD01_TIPODISTINTA (GD01_DITTA_CG18, GD01_CODICE, GD01_DESCR, "
                            "GD01_INDTIPOSOGG, GD01_IDDIV_CO1A) VALUES (1, '%1', '%2', %3, %4)")
                 .arg(code, description)
                 .arg(kind)
                 .arg(division ? QString::number(*division) : QStringLiteral("NULL")));
        return scalar(QStringLiteral("SELECT MAX(GD01_ID) FROM GD01_TIPODISTINTA")).toLongLong();
    }

    qint64 divisione(const QString &code, const QString &description)
    {
        exec(QStringLiteral("INSERT INTO CO1A_ANAGDIVISIONI (CO1A_DITTA_CG18, CO1A_CODICE, CO1A_DESCR) "
                            "VALUES (1, '%1', '%2')")
                 .arg(code, description));
        return scalar(QStringLiteral("SELECT MAX(CO1A_IDDIV) FROM CO1A_ANAGDIVISIONI")).toLongLong();
    }

    // A node of a type; a null code or parent is written as NULL.
    qint64 nodo(qint64 type, int kind, std::optional<int> code, const Nodo &extra = {})
    {
        const auto value = [](const auto &optional) {
            return optional ? QString::number(*optional) : QStringLiteral("NULL");
        };
        // Written as a database made before the trees checked themselves may hold it: a test's
        // parent may be gone, its company may not be the type's.
        host.database().executeUnchecked(
            QStringLiteral("INSERT INTO GD02_DISTINTA (GD02_ID_GD01, GD02_IDPARENT_GD02, GD02_DITTA_CG18, "
                           "GD02_TIPOCF_CG44, GD02_CLIFOR_CG44, GD02_DATAINIZIOVAL, GD02_DATAFINEVAL, "
                           "GD02_CLIFORFATT_CG44, GD02_IDSTRUTTURA_LP09, GD02_TIPOANAGFATT) "
                           "VALUES (%1, %2, %3, %4, %5, '%6 00:00:00', '%7 00:00:00', %8, %9, %10)")
                .arg(type)
                .arg(value(extra.parent))
                .arg(extra.company)
                .arg(kind)
                .arg(value(code))
                .arg(extra.start, extra.end)
                .arg(value(extra.billingCode), value(extra.structurePriority), value(extra.billingRule)));
        return scalar(QStringLiteral("SELECT MAX(GD02_ID) FROM GD02_DISTINTA")).toLongLong();
    }

    // A contract of a subject, with one condition (a bonus, or a promotional activity) that
    // reaches a node, or (node 0) the subject itself over a period. Returns the condition.
    qint64 contratto(int subjectCode, const QString &code = QStringLiteral("C1"))
    {
        exec(QStringLiteral("INSERT INTO GD10_CONTRATTI (GD10_DITTA_CG18, GD10_CODCONTR, GD10_DESCR, GD10_CLIFOR_CG44) "
                            "VALUES (1, '%1', 'Contratto %1', %2)")
                 .arg(code)
                 .arg(subjectCode));
        return scalar(QStringLiteral("SELECT MAX(GD10_ID) FROM GD10_CONTRATTI")).toLongLong();
    }
    qint64 condizione(qint64 contract, qint64 node, int subjectCode = 0,
                      const QString &start = QStringLiteral("2024-01-01"),
                      const QString &end = QStringLiteral("2024-12-31"), int kind = 0)
    {
        exec(QStringLiteral(
                 "INSERT INTO GD13_PREMI (GD13_DITTA_CG18, GD13_ID_GD10, GD13_CODCONTR_GD10, GD13_VERCONTR_GD10, "
                 "GD13_PROGRCOND, GD13_CODCOND, GD13_DESCR, GD13_TIPOCOND, GD13_DATAINIZIO, GD13_DATAFINE) "
                 "VALUES (1, %1, 'C1', 1, %1, 'P%1', 'Premio %1', %2, '%3 00:00:00', '%4 00:00:00')")
                 .arg(contract)
                 .arg(kind)
                 .arg(start, end));
        const qint64 condition = scalar(QStringLiteral("SELECT MAX(GD13_ID) FROM GD13_PREMI")).toLongLong();
        exec(
            QStringLiteral("INSERT INTO GD14_SOGGCONTR (GD14_DITTA_CG18, GD14_ID_GD13, GD14_CODCONTR_GD10, "
                           "GD14_VERCONTR_GD10, GD14_PROGRCOND_GD13, GD14_ID_GD02, GD14_TIPOCF_CG44, GD14_CLIFOR_CG44) "
                           "VALUES (1, %1, 'C1', 1, %2, %3, %4, %5)")
                .arg(condition)
                .arg(contract)
                .arg(node)
                .arg(kind)
                .arg(subjectCode));
        return condition;
    }
    // A settlement deadline of a condition; state 2 or more is definitive.
    void scadenza(qint64 condition, const QString &due, int state)
    {
        exec(QStringLiteral("INSERT INTO GD18_LIQUIDAZIONE (GD18_DITTA_CG18, GD18_ID_GD13, GD18_DATASCADENZA, "
                            "GD18_STATOSCADENZA) VALUES (1, %1, '%2 00:00:00', %3)")
                 .arg(condition)
                 .arg(due)
                 .arg(state));
    }

    FRMGD_DISTINTA *apri()
    {
        form = host.openEditor(*entry);
        form->resize(1400, 900);
        form->layout()->activate();
        return form;
    }

    template<typename Control>
    Control *control(const QString &name) const
    {
        Control *found = form->findChild<Control *>(name);
        if (!found)
            qFatal("no control %s", qPrintable(name));
        return found;
    }

    fw::TreeList *albero() const { return control<fw::TreeList>(QStringLiteral("TVW_DISTINTA")); }
    QTreeWidget *selettore() const { return control<QTreeWidget>(QStringLiteral("TVW_SELDISTINTE")); }
    // The line an empty view shows in its middle; empty while hidden.
    static QString indicazione(QAbstractItemView *view)
    {
        auto *label = view->viewport()->findChild<QLabel *>();
        return label && label->isVisibleTo(view->viewport()) ? label->text() : QString();
    }
    QString titolo() const { return control<fw::ElidedLabel>(QStringLiteral("lblDescDistinta"))->fullText(); }
    QString didascaliaLivelli() const { return control<QPushButton>(QStringLiteral("CMD_ESPANDICOLLASSA"))->text(); }

    QTreeWidgetItem *voce(const QString &key) const
    {
        for (QTreeWidgetItemIterator it(selettore()); *it; ++it) {
            if ((*it)->data(0, Qt::UserRole).toString() == key)
                return *it;
        }
        return nullptr;
    }

    // A click of the user on a node of the selector.
    void clicca(const QString &key)
    {
        QTreeWidget *tree = selettore();
        control<QTabWidget>(QStringLiteral("TAB_VISUALIZZAGESTIONE"))->setCurrentIndex(0);
        QTreeWidgetItem *item = voce(key);
        QVERIFY2(item, qPrintable(key));
        tree->scrollToItem(item);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(item).center());
    }

    // The subject codes of the tree in tree order, a level's depth shown by dots ("10", ".20").
    QStringList codiciAlbero() const
    {
        QStringList codes;
        for (fw::TreeListNode node = albero()->firstNode(); node.isValid(); node = node.next())
            codes << QString(node.level(), QLatin1Char('.'))
                    + node.value(QStringLiteral("trGD02_CLIFOR_CG44")).toString();
        return codes;
    }

    // Focuses the node of a subject code, as a click would.
    void focalizza(int code)
    {
        for (fw::TreeListNode node = albero()->firstNode(); node.isValid(); node = node.next()) {
            if (node.value(QStringLiteral("trGD02_CLIFOR_CG44")).toInt() == code) {
                albero()->setFocusedNode(node);
                return;
            }
        }
        QFAIL(qPrintable(QStringLiteral("no node %1").arg(code)));
    }

    // The editor's window shown and active, as for a user at the keyboard.
    bool attiva()
    {
        QWidget *window = form->window();
        window->show();
        window->activateWindow();
        return QTest::qWaitForWindowActive(window);
    }
    void premi(const QString &button) { control<QPushButton>(button)->click(); }
    // The menu opened on a node, as a right click opens it, and one of its commands chosen.
    void comando(int code, const QString &action)
    {
        focalizza(code);
        emit albero()->contextMenuRequested(albero()->focusedNode(), QPoint());
        form->findChild<QMenu *>(QStringLiteral("mnuCollegamento"))->hide();
        form->findChild<QAction *>(action)->trigger();
    }

    // The subject list's page, and a tick given to a subject there as the user gives it.
    void paginaAnagrafiche() { control<QTabWidget>(QStringLiteral("TAB_VISUALIZZAGESTIONE"))->setCurrentIndex(1); }
    void spunta(int code)
    {
        auto *grid = control<fw::RecordsetGrid>(QStringLiteral("GRD_ANAGRAFICHEDISTINTA"));
        const QVariantList codes = colonna(form->parti().anagrafiche.lista(), QStringLiteral("Codice"));
        const int row = int(codes.indexOf(QVariant(code)));
        QVERIFY2(row >= 0, qPrintable(QString::number(code)));
        QVERIFY(grid->model()->setData(grid->model()->index(row, 0), Qt::Checked, Qt::CheckStateRole));
    }
    QVariant cellaLista(int code, const QString &field) const
    {
        const QVariantList codes = colonna(form->parti().anagrafiche.lista(), QStringLiteral("Codice"));
        return colonna(form->parti().anagrafiche.lista(), field).value(int(codes.indexOf(QVariant(code))));
    }
    // Lets queued work (counting ticks, editors opened after an edit) run.
    static void attendi()
    {
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }

    QString codiceFocalizzato() const
    {
        return albero()->focusedNode().value(QStringLiteral("trGD02_CLIFOR_CG44")).toString();
    }

    // Every value of a field of a recordset, in row order.
    static QVariantList colonna(const db::RecordsetPtr &recordset, const QString &field)
    {
        QVariantList values;
        const int index = recordset->fieldIndex(field);
        for (int row = 0; row < recordset->recordCount(); ++row)
            values << recordset->valueAt(row, index);
        return values;
    }

    ScriptedHost host;
    std::unique_ptr<CLSGD_DISTINTA> entry;
    QPointer<FRMGD_DISTINTA> form;

private:
    int m_generalCodes = 0;
};
