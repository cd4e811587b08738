#pragma once

#include "CentralNetwork.h"
#include "ErrorLog.h"
#include "OutputPath.h"
#include "Settings.h"
#include "clsDataAccess.h"
#include "clsUsuarios.h"

#include <QDate>
#include <QString>
#include <functional>
#include <memory>

class Clock;
class DialogPort;
class PrinterService;

// The process-wide state of one run, built at start-up and handed by reference to services and
// screens: settings, the data access object, the operator, the working date and the dialog
// port.
class AppContext {
public:
    AppContext(QString folder, DialogPort& dialogs, const Clock& clock);
    ~AppContext();
    AppContext(const AppContext&) = delete;
    AppContext& operator=(const AppContext&) = delete;

    const QString folder;
    DialogPort& dialogs;
    const Clock& clock;
    ErrorLog errors;
    clsDataAccess db;
    Settings settings;

    QString userName;
    UserType userType = UserType::User;
    // The administrator who allowed the act under way (Permissions), empty when none was needed.
    QString autorizadoPor;
    QDate workingDate;
    // Runs a job on the authenticating printer the counter keeps (on its own thread), for the
    // screens that stamp while the counter is up; empty when there is none.
    std::function<void(std::function<void(PrinterService&)>)> printerJobs;
    // The central database of several counters: set by the screens' start-up (a link kept on its
    // own thread), else made on first use when Config.ini names one; empty otherwise.
    std::shared_ptr<CentralNetwork> rede;

    QString iniPath() const;
    QString filePath(const QString& name) const;
    // A key read at the moment of use (the keys Carrega_config does not load).
    QString option(const QString& section, const QString& key) const;
    // Loads Config.ini, repairing first what an earlier version spoiled in it (Log.ini says so).
    bool reloadSettings();

    // The folder of the database copies the closing keeps.
    QString copiesFolder() const;
    // The counter's own files, which no file written at a given path may take: the database and
    // its companions, Config.ini, Log.ini, the logs and the copies.
    OutputPath::Guarded ownFiles() const;
    // Why a new file may not be written at `path` (empty when it may): the one rule for every
    // command and screen that writes where it is pointed.
    QString outputProblem(const QString& path) const;

private:
    void repairSettings();
};
