#pragma once

#include <QDateTime>

// "Now" for the few rules that read the computer's clock; tests fix it.
class Clock {
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
    QDate today() const { return now().date(); }
};

class SystemClock final : public Clock {
public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
};

class FixedClock final : public Clock {
public:
    explicit FixedClock(QDateTime t) : m_now(std::move(t)) {}
    QDateTime now() const override { return m_now; }
    void set(const QDateTime& t) { m_now = t; }

private:
    QDateTime m_now;
};
