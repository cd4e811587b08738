#pragma once

#include "Transport.h"

#include <functional>
#include <memory>

struct PrinterStatus {
    bool answered = false;
    bool online = false;
    bool paperOut = false;
    bool document = false;
    bool nearEnd = false;
    int raw = 0;
};

// The first model's operations, spoken in ESC/Bema over any transport. Results follow the
// vendor library's: 1 done, 0 failure; AutenticaDoc also -1 when the document never came. A stamp
// counts as done only when the printer still answers, on line, after it.
class BematechProtocol {
public:
    explicit BematechProtocol(QString codePage = QStringLiteral("cp850"))
        : m_codePage(std::move(codePage)) {}

    int IniciaPorta(const QString& porta, const TransportOptions& options = {});
    int IniciaPorta(std::unique_ptr<Transport> transport); // an already built transport
    int ConfiguraModeloImpressora(int model);
    int FechaPorta();
    int FormataTX(const QString& text, int tipoLetra, int italico, int sublinhado, int expandido,
                  int enfatizado);
    int AutenticaDoc(const QString& text, int timeoutMs);
    int ComandoTX(const QByteArray& command);
    PrinterStatus Status();
    PrinterStatus lastStatus() const { return m_last; } // what the last Status() found

    bool isOpen() const { return m_transport && m_transport->isOpen(); }
    int replyTimeoutMs = 1000;
    int pollIntervalMs = 100;
    std::function<void(int)> sleep; // waits between polls; tests may shorten them
    // The stamp starts (true) or stops (false) waiting for the document in the slot.
    std::function<void(bool waiting)> onWaiting;

private:
    bool send(const QByteArray& bytes);
    PrinterStatus query();
    void wait(int ms);

    QString m_codePage;
    std::unique_ptr<Transport> m_transport;
    PrinterStatus m_last;
};
