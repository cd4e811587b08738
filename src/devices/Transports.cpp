#include "Transports.h"

#include "OutputPath.h"

#include <QDeadlineTimer>
#include <QFile>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>
#endif
#ifdef Q_OS_LINUX
#include <linux/lp.h>
#endif

// --- serial -------------------------------------------------------------------------------

bool SerialTransport::open(QString* error) {
    m_port.setPortName(m_name);
    m_port.setBaudRate(m_options.baud);
    m_port.setDataBits(m_options.dataBits == 7 ? QSerialPort::Data7 : QSerialPort::Data8);
    m_port.setParity(m_options.parity == 'E'   ? QSerialPort::EvenParity
                     : m_options.parity == 'O' ? QSerialPort::OddParity
                                               : QSerialPort::NoParity);
    m_port.setStopBits(m_options.stopBits == 2 ? QSerialPort::TwoStop : QSerialPort::OneStop);
    m_port.setFlowControl(QSerialPort::NoFlowControl);
    if (!m_port.open(QIODevice::ReadWrite)) {
        if (error)
            *error = m_port.errorString();
        return false;
    }
    return true;
}

bool SerialTransport::write(const QByteArray& data, int timeoutMs) {
    if (!m_port.isOpen() || m_port.write(data) != data.size())
        return false;
    QDeadlineTimer deadline(timeoutMs);
    while (m_port.bytesToWrite() > 0)
        if (!m_port.waitForBytesWritten(int(deadline.remainingTime())) || deadline.hasExpired())
            return m_port.bytesToWrite() == 0;
    return true;
}

QByteArray SerialTransport::read(int max, int timeoutMs) {
    if (!m_port.isOpen())
        return {};
    if (m_port.bytesAvailable() == 0 && !m_port.waitForReadyRead(timeoutMs))
        return {};
    return m_port.read(max);
}

// --- TCP ----------------------------------------------------------------------------------

bool TcpTransport::open(QString* error) {
    m_socket.connectToHost(m_host, quint16(m_port));
    if (!m_socket.waitForConnected(m_timeout)) {
        if (error)
            *error = m_socket.errorString();
        m_socket.abort();
        return false;
    }
    return true;
}

void TcpTransport::close() {
    if (m_socket.state() == QAbstractSocket::ConnectedState) {
        m_socket.flush();
        m_socket.disconnectFromHost();
        if (m_socket.state() != QAbstractSocket::UnconnectedState)
            m_socket.waitForDisconnected(500);
    }
    m_socket.abort();
}

bool TcpTransport::write(const QByteArray& data, int timeoutMs) {
    if (!isOpen() || m_socket.write(data) != data.size())
        return false;
    QDeadlineTimer deadline(timeoutMs);
    while (m_socket.bytesToWrite() > 0)
        if (!m_socket.waitForBytesWritten(int(deadline.remainingTime())) || deadline.hasExpired())
            return m_socket.bytesToWrite() == 0;
    return true;
}

QByteArray TcpTransport::read(int max, int timeoutMs) {
    if (!isOpen())
        return {};
    if (m_socket.bytesAvailable() == 0 && !m_socket.waitForReadyRead(timeoutMs))
        return {};
    return m_socket.read(max);
}

// --- device file --------------------------------------------------------------------------

bool DeviceFileTransport::open(QString* error) {
#ifdef Q_OS_UNIX
    const QByteArray path = QFile::encodeName(m_path);
    m_fd = ::open(path.constData(), O_RDWR | O_NONBLOCK | O_NOCTTY);
    if (m_fd < 0)
        m_fd = ::open(path.constData(), O_WRONLY | O_NONBLOCK | O_NOCTTY);
    if (m_fd < 0 && error)
        *error = QString::fromLocal8Bit(strerror(errno));
    return m_fd >= 0;
#else
    if (error)
        *error = QStringLiteral("porta de impressora não suportada nesta plataforma");
    return false;
#endif
}

void DeviceFileTransport::close() {
#ifdef Q_OS_UNIX
    if (m_fd >= 0)
        ::close(m_fd);
#endif
    m_fd = -1;
}

bool DeviceFileTransport::write(const QByteArray& data, int timeoutMs) {
#ifdef Q_OS_UNIX
    QDeadlineTimer deadline(timeoutMs);
    qsizetype done = 0;
    while (m_fd >= 0 && done < data.size()) {
        pollfd p{m_fd, POLLOUT, 0};
        const int ready = ::poll(&p, 1, int(qMax<qint64>(0, deadline.remainingTime())));
        if (ready <= 0 || (p.revents & (POLLERR | POLLHUP | POLLNVAL)))
            return false; // an off-line printer: give up at the time-out
        const ssize_t n = ::write(m_fd, data.constData() + done, size_t(data.size() - done));
        if (n < 0 && errno != EAGAIN && errno != EINTR)
            return false;
        done += n > 0 ? n : 0;
    }
    return done == data.size();
#else
    Q_UNUSED(data);
    Q_UNUSED(timeoutMs);
    return false;
#endif
}

QByteArray DeviceFileTransport::read(int max, int timeoutMs) {
#ifdef Q_OS_UNIX
    if (m_fd < 0)
        return {};
    pollfd p{m_fd, POLLIN, 0};
    if (::poll(&p, 1, timeoutMs) <= 0 || !(p.revents & POLLIN))
        return {};
    QByteArray buf(max, Qt::Uninitialized);
    const ssize_t n = ::read(m_fd, buf.data(), size_t(max));
    return n > 0 ? buf.left(int(n)) : QByteArray();
#else
    Q_UNUSED(max);
    Q_UNUSED(timeoutMs);
    return {};
#endif
}

std::optional<int> DeviceFileTransport::lineStatus() {
#ifdef Q_OS_LINUX
    int status = 0;
    if (m_fd >= 0 && ::ioctl(m_fd, LPGETSTATUS, &status) == 0)
        return status;
#endif
    return std::nullopt;
}

// --- file ---------------------------------------------------------------------------------

// A spool file is a regular file: never through a link, a FIFO or a device.
bool FileTransport::open(QString* error) {
    QFile f(m_path);
    m_open = OutputPath::openForAppend(f);
    if (!m_open && error) {
        const QString odd = OutputPath::notRegular(m_path);
        *error = odd.isEmpty() ? f.errorString() : odd;
    }
    return m_open;
}

bool FileTransport::write(const QByteArray& data, int) {
    QFile f(m_path);
    return m_open && OutputPath::openForAppend(f) && f.write(data) == data.size() && f.flush();
}
