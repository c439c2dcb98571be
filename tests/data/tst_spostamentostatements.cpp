#include "data/spostamentostatements.h"

#include <QTest>

// The statements of a branch's move, exact: the one UPDATE (guarded by the parent that was
// read, stamped, typed names quoted) and the definitive bonuses of a classification.
class TstSpostamentoStatements : public QObject
{
    Q_OBJECT

private slots:
    void moveUnderANodeAndToTheRoots()
    {
        spostamentostatements::Spostamento move;
        move.company = 1;
        move.nodeId = 25;
        move.oldParentId = 7;
        move.newParentId = 12;
        move.changedAt = QDateTime(QDate(2026, 11, 23), QTime(12, 30));
        move.userGroup = QStringLiteral("ADMIN");
        move.user = QStringLiteral("o'neill");
        QCOMPARE(
            spostamentostatements::moveStatement(move),
            QStringLiteral("UPDATE GD02_DISTINTA SET GD02_IDPARENT_GD02 = 12, GD02_DATAVAR = "
                           "CONVERT(DateTime,'23/11/2026',103), GD02_GRUPPOVAR = 'ADMIN', GD02_UTENTEVAR = 'o''neill' "
                           "WHERE GD02_DITTA_CG18 = 1 AND GD02_ID = 25 AND GD02_IDPARENT_GD02 = 7"));

        // To the roots from the roots' level of another branch: parent 0 and promotions of its
        // own, as a new root; a root read as such is matched whether its parent is 0 or NULL.
        move.newParentId = 0;
        move.oldParentId = 0;
        move.user = QStringLiteral("un nome utente molto più lungo della colonna");
        QCOMPARE(spostamentostatements::moveStatement(move),
                 QStringLiteral("UPDATE GD02_DISTINTA SET GD02_IDPARENT_GD02 = 0, GD02_INDEREPROMO = 2, GD02_DATAVAR = "
                                "CONVERT(DateTime,'23/11/2026',103), GD02_GRUPPOVAR = 'ADMIN', "
                                "GD02_UTENTEVAR = 'un nome utente molto' "
                                "WHERE GD02_DITTA_CG18 = 1 AND GD02_ID = 25 AND ISNULL(GD02_IDPARENT_GD02, 0) = 0"));
    }

    void definitiveBonusesOfAType()
    {
        QCOMPARE(spostamentostatements::definitiveBonusNodesQuery(2, 9),
                 QStringLiteral(
                     "SELECT DISTINCT GD14_ID_GD02  FROM  GD18_LIQUIDAZIONE INNER JOIN       GD13_PREMI ON "
                     "GD18_LIQUIDAZIONE.GD18_ID_GD13 = GD13_PREMI.GD13_ID        INNER JOIN        GD14_SOGGCONTR "
                     "ON GD13_PREMI.GD13_ID = GD14_SOGGCONTR.GD14_ID_GD13 WHERE GD13_DITTA_CG18    = 2   AND "
                     "GD14_ID_GD02 IN (SELECT GD02_ID FROM GD02_DISTINTA WHERE GD02_DITTA_CG18 = 2 AND "
                     "GD02_ID_GD01 = 9)    AND GD18_STATOSCADENZA >= 2    AND GD14_ID_GD02 NOT IN ("
                     "                            SELECT GD27_ID_GD02 "
                     "                              FROM GD27_SOGGCONTRDISAB "
                     "                             WHERE GD27_DITTA_CG18     = GD14_DITTA_CG18     "
                     "                               AND GD27_CODCONTR_GD10  = GD14_CODCONTR_GD10  "
                     "                               AND GD27_VERCONTR_GD10  = GD14_VERCONTR_GD10  "
                     "                               AND GD27_PROGRCOND_GD13 = GD14_PROGRCOND_GD13 "
                     "                            )   "));
    }
};

QTEST_MAIN(TstSpostamentoStatements)
#include "tst_spostamentostatements.moc"
