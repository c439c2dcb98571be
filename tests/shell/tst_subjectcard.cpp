#include "shell/cards/subjectcardcomponent.h"
#include "shell/cards/subjectcardform.h"
#include "framework/recordsetgrid.h"
#include "framework/hostglobalservices.h"
#include "tests/forms/gestionifixture.h"

#include <QMenu>

// The subject card the standalone program offers under the suite's names: what it shows of a
// subject, and how the editor reaches it through the host's module manager.
class TestSubjectCard : public QObject
{
    Q_OBJECT

    // Customer 1001 in types A01 (division ALI) and B01 (all divisions); supplier 500 in F01.
    struct Scheda : GestioniFixture
    {
        Scheda()
        {
            exec(QStringLiteral(
                "INSERT INTO CG62_CONDPAGDES (CG62_CODPAG, CG62_DESCPAG) VALUES ('RD', 'Rimessa diretta')"));
            soggetto(0, 1001, QStringLiteral("Bar dell'Angolo"), QStringLiteral("RD"));
            soggetto(1, 500, QStringLiteral("Trasporti Veloci"));
            const qint64 ali = divisione(QStringLiteral("ALI"), QStringLiteral("Divisione alimentare"));
            a01 = tipo(0, QStringLiteral("A01"), QStringLiteral("Bar e locali"), ali);
            b01 = tipo(0, QStringLiteral("B01"), QStringLiteral("Clienti storici"));
            f01 = tipo(1, QStringLiteral("F01"), QStringLiteral("Fornitori vari"));
            nodo(b01, 0, 1001);
            nodo(a01, 0, 1001);
            nodo(f01, 1, 500);
            // The host opens the cards as the shell does: the component, its contract, the subject.
            host.modules().cardOpener = [this](const QString &programId, int company, qint64 code) {
                auto component = std::make_unique<SubjectCardComponent>(
                    programId == SubjectCardComponent::CustomerCard ? 0 : 1);
                fw::fillHostContract(*component, host.context());
                component->ShowForm();
                component->TransferData(
                    QVariantMap {{QStringLiteral("Ditta"), company}, {QStringLiteral("CliFor"), code}});
                card = component->form();
                cards.push_back(std::move(component));
                return true;
            };
        }
        ~Scheda() { delete card; }

        QString campoScheda(const QString &name) const { return in<QLineEdit>(card, name)->text(); }

        std::vector<std::unique_ptr<SubjectCardComponent>> cards;
        QPointer<SubjectCardForm> card;
        qint64 a01 = 0, b01 = 0, f01 = 0;
    };

private slots:
    // Name, city, payment terms, and every list the subject is in with its period.
    void showsTheSubjectAndTheListsItIsIn()
    {
        Scheda f;
        f.host.modules().openSubjectCard(SubjectCardComponent::CustomerCard, 1, 1001);
        QVERIFY(f.card);
        f.card->Form_Activate();
        QCOMPARE(f.card->windowTitle(), QStringLiteral("Scheda cliente 1001"));
        QCOMPARE(f.campoScheda(QStringLiteral("txtCodice")), QStringLiteral("1001"));
        QCOMPARE(f.campoScheda(QStringLiteral("txtRagioneSociale")), QStringLiteral("Bar dell'Angolo"));
        QCOMPARE(f.campoScheda(QStringLiteral("txtCitta")), QStringLiteral("Verona (VR)"));
        QCOMPARE(f.campoScheda(QStringLiteral("txtPagamento")), QStringLiteral("RD - Rimessa diretta"));
        QVERIFY(GestioniFixture::in<QLineEdit>(f.card, QStringLiteral("txtRagioneSociale"))->isReadOnly());

        auto *grid = GestioniFixture::in<fw::RecordsetGrid>(f.card, QStringLiteral("grdDistinte"));
        QCOMPARE(grid->model()->rowCount(), 2);
        const auto cell = [grid](int row, const char *key) {
            return grid->model()->index(row, grid->columnOf(QLatin1String(key))).data().toString();
        };
        QCOMPARE(cell(0, "GD01_CODICE"), QStringLiteral("A01"));
        QCOMPARE(cell(0, "CO1A_CODICE"), QStringLiteral("ALI"));
        QCOMPARE(cell(1, "GD01_CODICE"), QStringLiteral("B01"));
        QCOMPARE(cell(1, "CO1A_CODICE"), QStringLiteral("Tutte"));
        QCOMPARE(cell(1, "GD02_DATAINIZIOVAL"), QStringLiteral("01/01/2024"));
        QCOMPARE(cell(1, "GD02_DATAFINEVAL"), QStringLiteral("31/12/2099"));
        QVERIFY(f.host.log().isQuiet());
    }

    // From the tree's menu the editor asks the host for the card of the node's subject; the
    // card the host opens is the one of that subject's kind.
    void theEditorReachesTheCardThroughTheHost()
    {
        Scheda f;
        f.apri();
        f.clicca(QStringLiteral("F%1").arg(f.f01));
        f.form->parti().gestioni.RichiamaSchedaFornitori(500);
        QVERIFY(f.card);
        f.card->Form_Activate();
        QCOMPARE(f.card->subjectKind(), 1);
        QCOMPARE(f.card->objectName(), QStringLiteral("FRMSCHEDA_FORNITORE"));
        QCOMPARE(f.campoScheda(QStringLiteral("txtRagioneSociale")), QStringLiteral("Trasporti Veloci"));
        QCOMPARE(f.card->distinte()->recordCount(), 1);
    }

    // A subject the company does not have is said so; the card stays empty.
    void anUnknownSubjectIsSaidSo()
    {
        Scheda f;
        f.host.modules().openSubjectCard(SubjectCardComponent::CustomerCard, 2, 1001);
        f.card->Form_Activate();
        QCOMPARE(f.host.log().messageTexts(),
                 QStringList {QStringLiteral("Il cliente 1001 non esiste nella ditta 2.")});
        QVERIFY(f.campoScheda(QStringLiteral("txtRagioneSociale")).isEmpty());
    }
};

QTEST_MAIN(TestSubjectCard)
#include "tst_subjectcard.moc"
