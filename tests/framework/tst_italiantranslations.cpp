#include "framework/italiantranslations.h"

#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QStringList texts(const QList<QPushButton *> &buttons)
{
    QStringList shown;
    for (const QPushButton *button : buttons)
        shown << button->text().remove(QLatin1Char('&'));
    return shown;
}

QStringList texts(const QList<QLabel *> &labels)
{
    QStringList shown;
    for (const QLabel *label : labels)
        shown << label->text().remove(QLatin1Char('&'));
    return shown;
}

} // namespace

class TestItalianTranslations : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(fw::installItalianTranslations(*QCoreApplication::instance())); }

    // Qt's own file dialog, as the export and print dialogs open it, and the input dialog of the
    // company change.
    void qtsDialogsSpeakItalian()
    {
        QFileDialog save(nullptr, QStringLiteral("Esporta"));
        save.setOption(QFileDialog::DontUseNativeDialog);
        save.setAcceptMode(QFileDialog::AcceptSave);
        save.show();
        const QStringList buttons = texts(save.findChildren<QPushButton *>());
        QVERIFY2(buttons.contains(QStringLiteral("Salva")) && buttons.contains(QStringLiteral("Annulla")),
                 qPrintable(buttons.join(QLatin1Char('|'))));
        const QStringList labels = texts(save.findChildren<QLabel *>());
        QVERIFY2(labels.contains(QStringLiteral("Cerca in:")) && labels.contains(QStringLiteral("Nome del file:")),
                 qPrintable(labels.join(QLatin1Char('|'))));

        QInputDialog company;
        company.setInputMode(QInputDialog::IntInput);
        company.show();
        const QStringList companyButtons = texts(company.findChildren<QPushButton *>());
        QVERIFY2(companyButtons.contains(QStringLiteral("Annulla")), qPrintable(companyButtons.join(QLatin1Char('|'))));
    }

    // The reason a file cannot be written reaches Italian messages in Italian.
    void fileErrorsSpeakItalian()
    {
        QTemporaryDir folder;
        QFile missing(folder.filePath(QStringLiteral("manca/distinta.csv")));
        QVERIFY(!missing.open(QIODevice::WriteOnly));
        QCOMPARE(missing.errorString(), QStringLiteral("File o cartella non trovati"));
    }
};

QTEST_MAIN(TestItalianTranslations)
#include "tst_italiantranslations.moc"
