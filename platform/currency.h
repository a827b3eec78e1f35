#pragma once

#include <QString>
#include <QtGlobal>
#include <compare>

namespace orvo {

// Money as a count of ten-thousandths, never a floating value.
class Currency {
public:
    constexpr Currency() = default;
    static constexpr Currency FromTenThousandths(qint64 units) { return Currency(units); }
    static constexpr Currency FromCents(qint64 cents) { return Currency(cents * 100); }
    // Parses "1234.5", "-0.25", "$1,000.00"; nullopt-like: ok=false on anything else.
    static Currency Parse(const QString& text, bool* ok = nullptr);

    constexpr qint64 tenThousandths() const { return units_; }
    // Rounded to cents, half away from zero, as the suite shows money.
    QString ToString() const;

    constexpr Currency operator+(Currency o) const { return Currency(units_ + o.units_); }
    constexpr Currency operator-(Currency o) const { return Currency(units_ - o.units_); }
    constexpr auto operator<=>(const Currency&) const = default;

private:
    constexpr explicit Currency(qint64 units) : units_(units) {}
    qint64 units_ = 0;
};

}  // namespace orvo
