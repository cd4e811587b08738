#include "CentralAccess.h"
#include "Cli.h"
#include "GuiStart.h"
#include "PrivateFiles.h"
#include "ScreenGallery.h"

#include <QApplication>
#include <QCoreApplication>
#include <QFileInfo>

int main(int argc, char** argv) {
    PrivateFiles::restrictNewFiles(); // the database, settings and logs are the account's alone
    CentralAccess::registrar();       // the central answers the reading's duplicate question
    QStringList args;
    for (int i = 1; i < argc; ++i)
        args << QString::fromLocal8Bit(argv[i]);
    if (!args.isEmpty() && args.first() == QLatin1String("telas"))
        return runScreens(argc, argv);
    if (!Cli::wantsCli(args))
        return runGui(argc, argv);
    const bool sampleSheet =
        args.contains(QLatin1String("iniciar")) && args.contains(QLatin1String("--demo"));
    if (Cli::needsPages(args) || sampleSheet) {
        // Pages, charts and the sample sheet need fonts and widgets, not a display.
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        QApplication app(argc, argv);
        QCoreApplication::setApplicationName(QStringLiteral("Tolvane"));
        return Cli::run(args, QCoreApplication::applicationDirPath());
    }
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Tolvane"));
    return Cli::run(args, QCoreApplication::applicationDirPath());
}
