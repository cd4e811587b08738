#pragma once

#include <QString>

// Where the program keeps Config.ini, caixa.db and its files: --pasta, else TOLVANE_PASTA, else
// the executable's folder when it holds a Config.ini (portable install), else the per-user
// data folder.
class AppFolder {
public:
    static QString resolve(const QString& fromArgument, const QString& exeFolder);
};

// One running copy per application folder; a second copy ends silently.
class SingleInstance {
public:
    explicit SingleInstance(const QString& folder);
    ~SingleInstance();
    bool acquired() const { return m_acquired; }

private:
    class QLockFile* m_lock = nullptr;
    bool m_acquired = false;
};
