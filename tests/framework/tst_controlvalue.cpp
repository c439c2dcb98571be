#include "framework/controlvalue.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QtTest>

// The value of an edit control as a record frame reads and writes it, and the conversion of
// what the user typed into a field's type (Italian decimal comma, "dd/mm/yyyy" dates).
class TestControlValue : public QObject
{
    Q_OBJECT

private slots:
    void typedTextBecomesTheFieldsType_data()
    {
        QTest::addColumn<QVariant>("typed");
        QTest::addColumn<int>("type");
        QTest::addColumn<QVariant>("expected");
        const auto midnight = [](int y, int m, int d) { return QVariant(QDateTime(QDate(y, m, d), QTime(0, 0))); };

        QTest::newRow("integer") << QVariant(QStringLiteral(" 1043 ")) << int(db::FieldType::Integer)
                                 << QVariant(1043LL);
        QTest::newRow("negative integer")
            << QVariant(QStringLiteral("-7")) << int(db::FieldType::Integer) << QVariant(-7LL);
        QTest::newRow("integer with letters stays")
            << QVariant(QStringLiteral("12a")) << int(db::FieldType::Integer) << QVariant(QStringLiteral("12a"));
        QTest::newRow("flag from a box") << QVariant(true) << int(db::FieldType::Boolean) << QVariant(1);
        QTest::newRow("decimal comma") << QVariant(QStringLiteral("1,5")) << int(db::FieldType::Decimal)
                                       << QVariant(1.5);
        QTest::newRow("decimal point") << QVariant(QStringLiteral("2.25")) << int(db::FieldType::Double)
                                       << QVariant(2.25);
        QTest::newRow("decimal not a number stays")
            << QVariant(QStringLiteral("uno")) << int(db::FieldType::Decimal) << QVariant(QStringLiteral("uno"));
        QTest::newRow("date typed") << QVariant(QStringLiteral("05/03/2024")) << int(db::FieldType::DateTime)
                                    << midnight(2024, 3, 5);
        QTest::newRow("open end") << QVariant(QStringLiteral("31/12/2099")) << int(db::FieldType::DateTime)
                                  << midnight(2099, 12, 31);
        QTest::newRow("leap day") << QVariant(QStringLiteral("29/02/2024")) << int(db::FieldType::DateTime)
                                  << midnight(2024, 2, 29);
        QTest::newRow("no leap day stays text")
            << QVariant(QStringLiteral("29/02/2023")) << int(db::FieldType::DateTime)
            << QVariant(QStringLiteral("29/02/2023"));
        QTest::newRow("month first stays text")
            << QVariant(QStringLiteral("12/31/2099")) << int(db::FieldType::DateTime)
            << QVariant(QStringLiteral("12/31/2099"));
        QTest::newRow("date from a calendar")
            << QVariant(QDate(2024, 1, 31)) << int(db::FieldType::DateTime) << midnight(2024, 1, 31);
        QTest::newRow("text untouched") << QVariant(QStringLiteral(" A01 ")) << int(db::FieldType::Text)
                                        << QVariant(QStringLiteral(" A01 "));
        QTest::newRow("null stays null") << QVariant() << int(db::FieldType::Integer) << QVariant();
    }

    void typedTextBecomesTheFieldsType()
    {
        QFETCH(QVariant, typed);
        QFETCH(int, type);
        QFETCH(QVariant, expected);
        const QVariant converted = controlvalue::toFieldValue(typed, db::FieldType(type));
        QCOMPARE(converted, expected);
        QCOMPARE(converted.typeId(), expected.typeId());
    }

    void queryByExampleComparesAsTheFieldDoes_data()
    {
        QTest::addColumn<QVariant>("typed");
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("same");

        QTest::newRow("code typed as text")
            << QVariant(QStringLiteral("1043")) << QVariant(1043LL) << int(db::FieldType::Integer) << true;
        QTest::newRow("another code") << QVariant(QStringLiteral("1044")) << QVariant(1043LL)
                                      << int(db::FieldType::Integer) << false;
        QTest::newRow("amount with a comma")
            << QVariant(QStringLiteral("1,50")) << QVariant(1.5) << int(db::FieldType::Decimal) << true;
        QTest::newRow("letters against a number")
            << QVariant(QStringLiteral("abc")) << QVariant(0LL) << int(db::FieldType::Integer) << false;
        QTest::newRow("text ignores case and blanks")
            << QVariant(QStringLiteral(" a01")) << QVariant(QStringLiteral("A01  ")) << int(db::FieldType::Text)
            << true;
        QTest::newRow("text differs") << QVariant(QStringLiteral("A01")) << QVariant(QStringLiteral("A011"))
                                      << int(db::FieldType::Text) << false;
        QTest::newRow("date typed against the stored day")
            << QVariant(QStringLiteral("05/03/2024")) << QVariant(QDateTime(QDate(2024, 3, 5), QTime(0, 0)))
            << int(db::FieldType::DateTime) << true;
        QTest::newRow("the next day") << QVariant(QStringLiteral("06/03/2024"))
                                      << QVariant(QDateTime(QDate(2024, 3, 5), QTime(0, 0)))
                                      << int(db::FieldType::DateTime) << false;
        QTest::newRow("a null stored value matches nothing")
            << QVariant(QStringLiteral("")) << QVariant() << int(db::FieldType::Text) << false;
        QTest::newRow("not even a null typed") << QVariant() << QVariant() << int(db::FieldType::Integer) << false;
    }

    void queryByExampleComparesAsTheFieldDoes()
    {
        QFETCH(QVariant, typed);
        QFETCH(QVariant, stored);
        QFETCH(int, type);
        QFETCH(bool, same);
        QCOMPARE(controlvalue::sameValue(typed, stored, db::FieldType(type)), same);
    }

    void textControlsReadNullWhenEmptyAndShowDatesTheItalianWay()
    {
        QLineEdit line;
        QVERIFY(controlvalue::read(&line).isNull());
        line.setText(QStringLiteral("A01"));
        QCOMPARE(controlvalue::read(&line), QVariant(QStringLiteral("A01")));
        controlvalue::write(&line, QDateTime(QDate(2099, 12, 31), QTime(0, 0)));
        QCOMPARE(line.text(), QStringLiteral("31/12/2099"));
        controlvalue::write(&line, 1043LL);
        QCOMPARE(line.text(), QStringLiteral("1043"));
        controlvalue::write(&line, QVariant());
        QVERIFY(line.text().isEmpty());

        QLabel label;
        controlvalue::write(&label, QDate(2024, 3, 5));
        QCOMPARE(label.text(), QStringLiteral("05/03/2024"));
        QCOMPARE(controlvalue::read(&label), QVariant(QStringLiteral("05/03/2024")));
        controlvalue::write(&label, QVariant());
        QVERIFY(controlvalue::read(&label).isNull());

        QPlainTextEdit note;
        controlvalue::write(&note, QStringLiteral("riga uno"));
        QCOMPARE(controlvalue::read(&note), QVariant(QStringLiteral("riga uno")));
    }

    // A combo is read by its items' data; a value without a matching item is looked up by text;
    // a null clears the choice.
    void combosChooseByDataThenByText()
    {
        QComboBox kind;
        kind.addItem(QStringLiteral("Cliente"), 0);
        kind.addItem(QStringLiteral("Fornitore"), 1);
        controlvalue::write(&kind, 1LL);
        QCOMPARE(kind.currentText(), QStringLiteral("Fornitore"));
        QCOMPARE(controlvalue::read(&kind).toInt(), 1);
        controlvalue::write(&kind, 0);
        QCOMPARE(kind.currentIndex(), 0);
        controlvalue::write(&kind, QVariant());
        QCOMPARE(kind.currentIndex(), -1);
        QVERIFY(controlvalue::read(&kind).isNull());
        controlvalue::write(&kind, 7); // no such item
        QCOMPARE(kind.currentIndex(), -1);

        QComboBox plain;
        plain.addItems({QStringLiteral("Eredita da capostipite"), QStringLiteral("Eredita dal padre")});
        controlvalue::write(&plain, QStringLiteral("Eredita dal padre"));
        QCOMPARE(plain.currentIndex(), 1);
        QCOMPARE(controlvalue::read(&plain), QVariant(QStringLiteral("Eredita dal padre")));
    }

    void otherControlsUseTheirUserProperty()
    {
        QCheckBox flag;
        controlvalue::write(&flag, true);
        QVERIFY(flag.isChecked());
        QCOMPARE(controlvalue::read(&flag), QVariant(true));
        controlvalue::write(&flag, QVariant());
        QVERIFY(!flag.isChecked());

        QSpinBox level;
        level.setRange(0, 99);
        controlvalue::write(&level, 4);
        QCOMPARE(level.value(), 4);
        controlvalue::write(&level, QVariant());
        QCOMPARE(level.value(), 0);

        QDateEdit day;
        controlvalue::write(&day, QDate(2024, 2, 29));
        QCOMPARE(day.date(), QDate(2024, 2, 29));
    }

    void changesAreReportedForEditableControlsOnly()
    {
        QObject context;
        int edits = 0;
        const auto count = [&edits] { ++edits; };

        QLineEdit line;
        QComboBox combo;
        combo.addItems({QStringLiteral("a"), QStringLiteral("b")});
        QCheckBox flag;
        QSpinBox spin;
        QPlainTextEdit note;
        for (QWidget *control : std::initializer_list<QWidget *> {&line, &combo, &flag, &spin, &note})
            QVERIFY(controlvalue::onChange(control, &context, count));
        line.setText(QStringLiteral("x"));
        combo.setCurrentIndex(1);
        flag.setChecked(true);
        spin.setValue(3);
        note.setPlainText(QStringLiteral("y"));
        QCOMPARE(edits, 5);

        QLabel label;
        QVERIFY(!controlvalue::onChange(&label, &context, count));
    }
};

QTEST_MAIN(TestControlValue)
#include "tst_controlvalue.moc"
