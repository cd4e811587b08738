#pragma once

#include <QString>

// The counter's files are private to the account that runs it: the database, Config.ini (which
// may hold the server's password), Log.ini and the files of the day. On POSIX systems new files
// are created 0600 and new folders 0700; elsewhere these calls do nothing.
class PrivateFiles {
public:
    // For the whole process, before anything is created.
    static void restrictNewFiles();
    // Owner read and write only; false when the mode could not be set. A missing file is fine.
    static bool secureFile(const QString& path);
    // Owner only (0700).
    static bool secureFolder(const QString& path);
};
