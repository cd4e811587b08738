#pragma once

#include "Transport.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QStringList>
#include <atomic>
#include <memory>
#include <mutex>
#include <thread>

// A printer that parses the driver's bytes for both models, keeps the tape and the stamped
// documents as text, and answers status. It can be told that a document is in place, missing,
// or arrives after some time, and that the printer is off-line or does not answer.
class PrinterEmulator {
public:
    enum class Model { Bematech, Quattro };
    explicit PrinterEmulator(Model model) : m_model(model) {}

    QByteArray feed(const QByteArray& bytes); // answers what the printer sends back

    void setDocument(bool present);
    void documentAfter(int ms);
    void setOffline(bool offline);
    void setSilent(bool silent); // powered off: no answer at all
    void setPaperOut(bool out);
    // Over TCP: hang up once a stamp's bytes have come, before it is printed, as a printer
    // losing its cable or power would.
    void hangUpOnStamp(bool on);
    bool takeHangUp(); // whether the link should hang up now (asked once)

    QStringList tape() const;
    QStringList documents() const;
    QByteArray received() const;
    bool inDocumentMode() const;
    bool inAuthMode() const;
    bool attributesOff() const; // every text attribute switched off

    QByteArray quattroStatusQuery = QByteArray("\x1B\x76", 2);
    QByteArray quattroEnd; // bytes after a stamp's text, when the settings name some

private:
    bool documentPresent() const;
    int statusByte() const;
    void parseBematech(QByteArray& out);
    void parseQuattro(QByteArray& out);
    void endLine(bool document);

    Model m_model;
    mutable std::mutex m_mutex;
    QByteArray m_pending, m_received;
    QStringList m_tape, m_documents;
    QByteArray m_line;
    bool m_documentMode = false, m_authMode = false, m_stamping = false;
    bool m_bold = false, m_expanded = false, m_underline = false, m_italic = false,
         m_condensed = false;
    bool m_document = false, m_offline = false, m_silent = false, m_paperOut = false;
    bool m_hangUpOnStamp = false, m_hangUp = false;
    int m_documentAfterMs = -1;
    QElapsedTimer m_clock;
};

// The emulator behind the Transport interface, in memory.
class MemoryTransport : public Transport {
public:
    explicit MemoryTransport(PrinterEmulator& e) : m_emulator(e) {}
    bool open(QString*) override { return m_open = true; }
    void close() override { m_open = false; }
    bool isOpen() const override { return m_open; }
    bool write(const QByteArray& data, int) override;
    QByteArray read(int max, int) override;
    QString describe() const override { return QStringLiteral("memória"); }
    bool failWrites = false; // a cable pulled

private:
    PrinterEmulator& m_emulator;
    QByteArray m_replies;
    bool m_open = false;
};

// The emulator on the far side of a pseudo-terminal (a serial port) or of a loopback TCP
// listener, served by a thread of its own.
class EmulatorLink {
public:
    static std::unique_ptr<EmulatorLink> pty(PrinterEmulator& e);
    static std::unique_ptr<EmulatorLink> tcp(PrinterEmulator& e);
    ~EmulatorLink();
    QString porta() const { return m_porta; } // what goes into [Print] porta

private:
    EmulatorLink(PrinterEmulator& e) : m_emulator(e) {}
    void servePty();
    void serveTcp();
    void pump(int fd);

    PrinterEmulator& m_emulator;
    QString m_porta;
    int m_fd = -1;
    std::atomic<bool> m_stop{false};
    std::thread m_thread;
};
