#pragma once

#include "AppContext.h"
#include "Clock.h"
#include "DbConfig.h"
#include "ScriptedDialogPort.h"

#include <QTemporaryDir>
#include <QTest>
#include <memory>

// A fresh application folder with a Config.ini, a scripted dialog port, a fixed clock and an
// open, migrated database (SQLite in the folder, or a new database on the test PostgreSQL
// server). Nothing touches the user's folders.
class TestApp {
public:
    enum class Backend { SQLite, PostgreSQL };

    // `shown`: the port the program's boxes go to instead of the scripted one (a test that
    // drives the real boxes); it must outlive the TestApp.
    explicit TestApp(Backend backend = Backend::SQLite,
                     const QDateTime& now = QDateTime(QDate(2026, 11, 23), QTime(10, 0)),
                     DialogPort* shown = nullptr);

    bool ok() const { return m_ok; }
    QString folder() const { return m_dir.path(); }
    QString path(const QString& name) const { return m_dir.filePath(name); }
    void setOption(const QString& section, const QString& key, const QString& value);

    AppContext& ctx() { return *m_ctx; }
    clsDataAccess& db() { return m_ctx->db; }
    ScriptedDialogPort& dialogs() { return m_dialogs; }
    FixedClock& clock() { return m_clock; }

    // Adds an operator directly; answers its id.
    int addUser(const QString& nome, const QString& senha, const QString& tipo, int ativo = 1);
    int count(const QString& table, const QString& where = {});
    QString log() const; // Log.ini as written, empty when there is none

    static QString backendName(Backend b) {
        return b == Backend::SQLite ? QStringLiteral("sqlite") : QStringLiteral("postgres");
    }

private:
    QTemporaryDir m_dir;
    ScriptedDialogPort m_dialogs;
    FixedClock m_clock;
    std::unique_ptr<AppContext> m_ctx;
    bool m_ok = false;
};

// A box asked while a transaction is active fails the running test.
void failOnLockedBox(DialogPort& dialogs);

// The program on a folder the test prepared itself (or a second program on the same database):
// scripted dialogs, the fixed clock, and nothing opened yet.
struct FolderContext {
    explicit FolderContext(const QString& folder) : ctx(folder, dialogs, clock) {
        failOnLockedBox(dialogs);
    }
    ScriptedDialogPort dialogs;
    FixedClock clock{QDateTime(QDate(2026, 11, 23), QTime(10, 0))};
    AppContext ctx;
};

// Adds the "backend" column with a sqlite and a postgres row to a _data function.
void addBackendRows();
#define TEST_BACKEND()                                                                             \
    QFETCH_GLOBAL(QString, backend);                                                               \
    TestApp app(backend == QLatin1String("postgres") ? TestApp::Backend::PostgreSQL                \
                                                     : TestApp::Backend::SQLite);                  \
    QVERIFY2(app.ok(), "test database could not be opened")
