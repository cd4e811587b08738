#pragma once

#include "Money.h"

#include <QDate>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

// A disconnected, read-only result: every row is in memory, fields are read by name
// (case-insensitively) at the current row.
class Recordset {
public:
    Recordset() = default;
    Recordset(QStringList fields, QVector<QVector<QVariant>> rows);

    int recordCount() const { return m_rows.size(); }
    bool EOF_() const { return m_rows.isEmpty() || m_pos >= m_rows.size(); }
    bool atRow() const { return !EOF_(); }
    void moveNext() { ++m_pos; }
    int position() const { return m_pos; }

    const QStringList& fields() const { return m_fields; }
    bool hasField(const QString& name) const;

    // At the current row. A missing field or a NULL reads as an invalid QVariant / empty text / 0.
    QVariant value(const QString& name) const;
    QVariant value(int index) const;
    QString text(const QString& name) const;
    qint64 integer(const QString& name) const;
    Money money(const QString& name) const;
    QDate date(const QString& name) const;
    bool isNull(const QString& name) const;

    const QVector<QVector<QVariant>>& rows() const { return m_rows; }

private:
    int indexOf(const QString& name) const;

    QStringList m_fields;
    QHash<QString, int> m_index; // lower-cased field name -> column
    QVector<QVector<QVariant>> m_rows;
    int m_pos = 0;
};

// Conversions shared with the data access layer.
qint64 variantToInt64(const QVariant& v, bool* ok = nullptr);
QDate variantToDate(const QVariant& v);
