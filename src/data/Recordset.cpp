#include "Recordset.h"

#include "DateUtil.h"

Recordset::Recordset(QStringList fields, QVector<QVector<QVariant>> rows)
    : m_fields(std::move(fields)), m_rows(std::move(rows)) {
    for (int i = 0; i < m_fields.size(); ++i) {
        const QString key = m_fields[i].toLower();
        if (!m_index.contains(key))
            m_index.insert(key, i);
    }
}

int Recordset::indexOf(const QString& name) const {
    return m_index.value(name.toLower(), -1);
}

bool Recordset::hasField(const QString& name) const {
    return indexOf(name) >= 0;
}

QVariant Recordset::value(int index) const {
    if (!atRow() || index < 0 || index >= m_rows[m_pos].size())
        return {};
    return m_rows[m_pos][index];
}

QVariant Recordset::value(const QString& name) const {
    return value(indexOf(name));
}

bool Recordset::isNull(const QString& name) const {
    const QVariant v = value(name);
    return !v.isValid() || v.isNull();
}

QString Recordset::text(const QString& name) const {
    const QVariant v = value(name);
    if (v.typeId() == QMetaType::QDate)
        return DateUtil::br(v.toDate());
    return v.isNull() ? QString() : v.toString();
}

qint64 variantToInt64(const QVariant& v, bool* ok) {
    bool good = false;
    qint64 r = 0;
    if (v.isValid() && !v.isNull()) {
        r = v.toLongLong(&good);
        if (!good) {
            // PostgreSQL sums come back as numeric text ("123" or "123.0000").
            const double d = v.toString().toDouble(&good);
            r = good ? static_cast<qint64>(d) : 0;
        }
    }
    if (ok)
        *ok = good;
    return r;
}

QDate variantToDate(const QVariant& v) {
    if (v.typeId() == QMetaType::QDate)
        return v.toDate();
    if (v.typeId() == QMetaType::QDateTime)
        return v.toDateTime().date();
    return DateUtil::parseAny(v.toString()).value_or(QDate());
}

qint64 Recordset::integer(const QString& name) const {
    return variantToInt64(value(name));
}

Money Recordset::money(const QString& name) const {
    return Money::fromUnits(variantToInt64(value(name)));
}

QDate Recordset::date(const QString& name) const {
    return variantToDate(value(name));
}
