#include "CentralCliFolder.h"

#include <QTcpServer>

CentralCliFolder::CentralCliFolder(const QString& guiche, const DbConfig& central)
    : CliFolder(kTimeoutMs) {
    asAdmin({QStringLiteral("guiche"), QStringLiteral("assumir"), guiche});
    options({QStringLiteral("Export/rede=1"), QStringLiteral("Rede/host=") + central.host,
             QStringLiteral("Rede/porta=%1").arg(central.port),
             QStringLiteral("Rede/nome=") + central.name,
             QStringLiteral("Rede/usuario=") + central.user});
}

int CentralCliFolder::closedPort() {
    QTcpServer s;
    s.listen(QHostAddress::LocalHost, 0);
    return s.serverPort(); // closed again when `s` goes
}
