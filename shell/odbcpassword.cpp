#include "shell/odbcpassword.h"

#include "platform/db/connectionstring.h"
#include "platform/os/filesystem.h"

#include <QDir>
#include <QFile>

namespace {

const QStringList passwordKeys {QStringLiteral("PWD"), QStringLiteral("Password")};

// The first line of the file, without its line break; problem set when it cannot be used.
QString passwordFromFile(const QString &path, QString *problem)
{
    const QString shown = QDir::toNativeSeparators(path);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *problem = QStringLiteral("Impossibile leggere il file della password %1.").arg(shown);
        return {};
    }
    if (!os::isPrivateToUser(path)) {
        *problem = QStringLiteral("Il file della password %1 deve appartenere all'utente ed essere leggibile solo da "
                                  "lui (chmod 600): non viene usato.")
                       .arg(shown);
        return {};
    }
    QByteArray line = file.readLine();
    while (line.endsWith('\n') || line.endsWith('\r'))
        line.chop(1);
    if (line.isEmpty())
        *problem = QStringLiteral("Il file della password %1 è vuoto.").arg(shown);
    return QString::fromUtf8(line);
}

} // namespace

OdbcLogin odbcLogin(const QString &odbcString, const QString &passwordFile)
{
    OdbcLogin login;
    const QString fromEnvironment = qEnvironmentVariable(kOdbcPasswordVariable);
    qunsetenv(kOdbcPasswordVariable);
    QString password;
    if (!passwordFile.isEmpty()) {
        password = passwordFromFile(passwordFile, &login.problem);
        if (!login.problem.isEmpty())
            return login;
    } else {
        password = fromEnvironment;
    }

    const bool written = db::connectionstring::contains(odbcString, passwordKeys);
    if (written && !password.isEmpty()) {
        login.problem = QStringLiteral(
                            "La password è indicata sia nella stringa --odbc sia in %1: indicarla una volta sola.")
                            .arg(passwordFile.isEmpty() ? QString::fromLatin1(kOdbcPasswordVariable)
                                                        : QStringLiteral("--odbc-password-file"));
        return login;
    }
    if (written)
        login.warning = QStringLiteral(
                            "Attenzione: la password scritta in --odbc è visibile agli altri utenti di questo "
                            "computer; passarla con la variabile %1 o con --odbc-password-file.")
                            .arg(QString::fromLatin1(kOdbcPasswordVariable));
    login.connectionString = password.isEmpty()
        ? odbcString
        : db::connectionstring::with(odbcString, QStringLiteral("PWD"), password);
    return login;
}
