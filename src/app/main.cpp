#include "Cli.h"
#include "GuiStart.h"
#include "PrivateFiles.h"
#include "ScreenGallery.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QGuiApplication>

int main(int argc, char** argv) {
    PrivateFiles::restrictNewFiles(); // the database, settings and logs are the account's alone
    QStringList args;
    for (int i = 1; i < argc; ++i)
        args << QString::fromLocal8Bit(argv[i]);
    if (!args.isEmpty() && args.first() == QLatin1String("telas"))
        return runScreens(argc, argv);
    if (!Cli::wantsCli(args))
        return runGui(argc, argv);
    if (args.contains(QLatin1String("iniciar")) && args.contains(QLatin1String("--demo"))) {
        // The sample sheet is painted, and Qt paints text only with a GUI application; the
        // offscreen platform needs no display.
        qputenv("QT_QPA_PLATFORM", "offscreen");
        QGuiApplication app(argc, argv);
        QGuiApplication::setApplicationName(QStringLiteral("Tolvane"));
        return Cli::run(args, QCoreApplication::applicationDirPath());
    }
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Tolvane"));
    return Cli::run(args, QCoreApplication::applicationDirPath());
}
