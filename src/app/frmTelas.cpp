#include "frmTelas.h"

#include "AbreBD.h"
#include "AppContext.h"
#include "Clock.h"
#include "CounterSession.h"
#include "DemoData.h"
#include "IniFile.h"
#include "PasswordHash.h"
#include "ScriptedDialogPort.h"
#include "clsUsuarios.h"
#include "frmData.h"
#include "frmFrente.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTextStream>

namespace {

bool save(QWidget& w, const QString& dir, const QString& name)
{
    w.show();
    QApplication::processEvents();
    const bool ok = w.grab().save(QDir(dir).filePath(name + QStringLiteral(".png")));
    w.hide();
    return ok;
}

CustomerItem demoItem(int tipo, const char* desc, const char* valor, const char* codigo, const char* venc)
{
    CustomerItem it;
    it.tipo = tipo;
    it.descricao = QString::fromUtf8(desc);
    it.valor = *Money::parse(QString::fromLatin1(valor));
    it.codbarra = QString::fromLatin1(codigo);
    it.vencimento = QString::fromLatin1(venc);
    return it;
}

}  // namespace

int runScreens(int argc, char** argv)
{
    QApplication app(argc, argv);
    QTextStream err(stderr);
    const QStringList args = QApplication::arguments();
    const QString out = args.size() > 2 ? args[2] : QStringLiteral("screens");
    QDir().mkpath(out);

    QTemporaryDir folder;
    ScriptedDialogPort dialogs;
    FixedClock clock(QDateTime(QDate(2026, 11, 23), QTime(10, 15, 30)));
    AppContext ctx(folder.path(), dialogs, clock);
    IniFile::write(QStringLiteral("Export"), QStringLiteral("guiche"), QStringLiteral("1"), ctx.iniPath());
    if (!AbreBD::Abre_conexao(ctx, true) || !DemoData::seed(ctx, nullptr, nullptr)) {
        err << "Não foi possível preparar os dados das telas.\n";
        return 1;
    }
    ctx.reloadSettings();
    ctx.userName = QStringLiteral("MARIA DA SILVA");
    ctx.workingDate = clock.today();

    int failures = 0;
    frmData date(ctx);
    failures += !save(date, out, QStringLiteral("frmData"));

    CounterSession session(ctx, nullptr);
    session.day().abrir();
    frmFrente empty(session, false);
    failures += !save(empty, out, QStringLiteral("frmFrente-vazio"));

    session.list().append(demoItem(1, "IPTU", "312,40", "81660000003124004250202611305800000000001234", "30/11/2026"));
    session.list().append(demoItem(2, "TAXAS DIVERSAS", "57,90", "81670000000579004260202612105800000000004321", "10/12/2026"));
    session.list().append(demoItem(4, "AGUA E ESGOTO", "89,15", "00191129700000089151234500000000000000000017", "05/12/2026"));
    session.list().append(demoItem(7, "TAXA DE EXPEDIENTE", "15,00", "", ""));
    session.tender(QStringLiteral("500,00"));
    frmFrente four(session, false);
    failures += !save(four, out, QStringLiteral("frmFrente-quatro-itens"));

    session.list().clear();
    session.resetPayment();
    dialogs.defaultAnswer = DialogAnswer::Yes;
    session.day().encerrar();
    frmFrente closed(session, false);
    failures += !save(closed, out, QStringLiteral("frmFrente-encerrado"));

    err << QStringLiteral("Telas gravadas em %1\n").arg(QDir(out).absolutePath());
    return failures == 0 ? 0 : 1;
}
