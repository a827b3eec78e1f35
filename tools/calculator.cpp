#include "tools/calculator.h"

#include <algorithm>
#include <cmath>

#include "platform/currency.h"

namespace orvo::tools {

namespace {

// As many digits as a double carries exactly through text and back.
constexpr int kMaxDigits = 15;

int DigitCount(const QString& text) {
    int n = 0;
    for (const QChar c : text)
        n += c.isDigit() ? 1 : 0;
    return n;
}

// The decimals a number was typed or shown with; -1 when it is shown with an exponent.
int DecimalsOf(const QString& text) {
    if (text.contains(QLatin1Char('e')))
        return -1;
    const qsizetype point = text.indexOf(QLatin1Char('.'));
    return point < 0 ? 0 : int(text.size() - point - 1);
}

// A result of decimal operands, rounded to the decimals its exact value can have: a sum or
// difference has as many as its longer operand, a product as many as both together. This is
// what keeps 100 - 99.9 at 0.1 where the binary difference is 0.0999999999999943.
double Exact(double value, int decimals) {
    if (decimals < 0 || decimals > kMaxDigits || !std::isfinite(value))
        return value;
    return QString::number(value, 'f', decimals).toDouble();
}

}  // namespace

QString Calculator::ReadoutOf(double value) {
    if (value == 0 || !std::isfinite(value))
        return QStringLiteral("0.");
    QString text = QString::number(value, 'g', kMaxDigits);
    if (!text.contains(QLatin1Char('.')) && !text.contains(QLatin1Char('e')))
        text += QLatin1Char('.');
    return text;
}

double Calculator::ValueOf(const QString& text) {
    bool ok = false;
    const double value = text.trimmed().toDouble(&ok);
    if (ok)
        return value;
    // Money as the screens show it ("$1,000.00").
    const Currency money = Currency::Parse(text.trimmed(), &ok);
    return ok ? double(money.tenThousandths()) / 10000.0 : 0.0;
}

void Calculator::SetValue(const QString& text, bool digitsAdd) {
    Cancel();
    readout_ = ReadoutOf(ValueOf(text));
    // A value with decimals goes on after them; a whole one takes digits before the point.
    decimalFlag_ = !readout_.endsWith(QLatin1Char('.'));
    if (digitsAdd)
        lastInput_ = kNums;
}

bool Calculator::Digit(int digit) {
    if (digit < 0 || digit > 9)
        return false;
    if (lastInput_ != kNums) {
        readout_ = QStringLiteral("0.");
        decimalFlag_ = false;
    }
    if (DigitCount(readout_) >= kMaxDigits || readout_.contains(QLatin1Char('e'))) {
        lastInput_ = kNums;
        return false;
    }
    const QChar d = QLatin1Char(char('0' + digit));
    if (decimalFlag_) {
        readout_ += d;
    } else {
        const qsizetype point = readout_.indexOf(QLatin1Char('.'));
        const QString whole = readout_.left(point);
        if (whole == QLatin1String("0") || whole == QLatin1String("-0"))
            readout_ = readout_.left(point - 1) + d + readout_.mid(point);
        else
            readout_.insert(point, d);
    }
    if (lastInput_ == kNeg)
        readout_.prepend(QLatin1Char('-'));
    lastInput_ = kNums;
    return true;
}

void Calculator::DecimalPoint() {
    if (lastInput_ == kNeg)
        readout_ = QStringLiteral("-0.");
    else if (lastInput_ != kNums)
        readout_ = QStringLiteral("0.");
    decimalFlag_ = true;
    lastInput_ = kNums;
}

// The readout takes a minus in front; one already there makes the two cancel, so the readout
// always shows a number.
void Calculator::StartNegative() {
    readout_ =
        readout_.startsWith(QLatin1Char('-')) ? readout_.mid(1) : QLatin1Char('-') + readout_;
    lastInput_ = kNeg;
}

bool Calculator::Operator(const QString& op) {
    bool divided = true;
    if (lastInput_ == kNums)
        ++operandCount_;
    if (operandCount_ == 0) {
        if (op == QLatin1String("-") && lastInput_ != kNeg)
            StartNegative();
    } else if (operandCount_ == 1) {
        operand1_ = ValueOf(readout_);
        if (op == QLatin1String("-") && lastInput_ != kNums && lastInput_ != kNeg &&
            pendingOperator_ != QLatin1String("="))
            StartNegative();
    } else {
        operand2_ = ValueOf(readout_);
        const int d1 = DecimalsOf(ReadoutOf(operand1_));
        const int d2 = DecimalsOf(readout_);
        const int sumDecimals = d1 < 0 || d2 < 0 ? -1 : std::max(d1, d2);
        const int productDecimals = d1 < 0 || d2 < 0 ? -1 : d1 + d2;
        if (pendingOperator_ == QLatin1String("+"))
            operand1_ = Exact(operand1_ + operand2_, sumDecimals);
        else if (pendingOperator_ == QLatin1String("-"))
            operand1_ = Exact(operand1_ - operand2_, sumDecimals);
        else if (pendingOperator_ == QLatin1String("X") || pendingOperator_ == QLatin1String("%"))
            operand1_ = Exact(operand1_ * operand2_, productDecimals);
        else if (pendingOperator_ == QLatin1String("/") && operand2_ == 0)
            divided = false;
        else if (pendingOperator_ == QLatin1String("/"))
            operand1_ /= operand2_;
        else if (pendingOperator_ == QLatin1String("="))
            operand1_ = operand2_;
        // What is shown is what goes on: the next operation starts from the readout's digits.
        readout_ = ReadoutOf(operand1_);
        operand1_ = ValueOf(readout_);
        operandCount_ = 1;
    }
    if (lastInput_ != kNeg) {
        lastInput_ = kOps;
        pendingOperator_ = op;
    }
    return divided;
}

void Calculator::Percent() {
    const int decimals = DecimalsOf(readout_);
    readout_ = ReadoutOf(Exact(ValueOf(readout_) / 100, decimals < 0 ? -1 : decimals + 2));
    lastInput_ = kPercentOps;
    pendingOperator_ = QStringLiteral("%");
    ++operandCount_;
    decimalFlag_ = true;
}

void Calculator::Cancel() {
    readout_ = QStringLiteral("0.");
    lastInput_.clear();
    pendingOperator_.clear();
    operand1_ = operand2_ = 0;
    operandCount_ = 0;
    decimalFlag_ = false;
}

void Calculator::CancelEntry() {
    readout_ = QStringLiteral("0.");
    decimalFlag_ = false;
    // The sign typed for the number goes with it.
    if (lastInput_ == kNeg)
        lastInput_.clear();
}

QString Calculator::Result(bool* ok) {
    bool divided = true;
    if (!pendingOperator_.isEmpty() && pendingOperator_ != QLatin1String("="))
        divided = Operator(QStringLiteral("="));
    if (ok)
        *ok = divided;
    return readout_;
}

}  // namespace orvo::tools
