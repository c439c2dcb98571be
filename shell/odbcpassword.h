#pragma once

#include <QString>

// The environment variable that may hold the password of the ODBC connection.
inline constexpr const char *kOdbcPasswordVariable = "DISTINTA_ODBC_PASSWORD";

// The ODBC connection string as the driver gets it, with its password taken from where the user
// put it: the environment variable above, or a file that only the user may read (passwordFile,
// from --odbc-password-file; its first line). A password written in --odbc itself ("PWD=",
// "Password=") still works, but every user of the machine can read the command line of a running
// program, so it earns a warning. The variable is removed from the environment once read.
struct OdbcLogin
{
    QString connectionString; // empty when problem is set
    QString warning;          // to show, and go on
    QString problem;          // to show, and stop
};

OdbcLogin odbcLogin(const QString &odbcString, const QString &passwordFile);
