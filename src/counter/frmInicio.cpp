#include "frmInicio.h"

#include "AbreBD.h"
#include "AppContext.h"
#include "AppFolder.h"
#include "Clock.h"
#include "frmData.h"
#include "frmMensagem.h"

#include <QApplication>
#include <QDir>

int runGui(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tolvane"));
    const QStringList args = QApplication::arguments();
    const int p = args.indexOf(QStringLiteral("--pasta"));
    const QString folder = AppFolder::resolve(p >= 0 && p + 1 < args.size() ? args[p + 1] : QString(),
                                              QApplication::applicationDirPath());
    SingleInstance instance(folder);
    if (!instance.acquired())
        return 0;  // another copy is running on this folder: end silently

    frmMensagem dialogs;
    SystemClock clock;
    AppContext ctx(folder, dialogs, clock);
    AbreBD::startup(ctx);

    frmData date(ctx);
    QObject::connect(&date, &frmData::prosseguir, &date, [&](DateScreenLogic::Action) { date.accept(); });
    date.show();
    return app.exec();
}
