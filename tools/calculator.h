#pragma once

#include <QString>

namespace orvo::tools {

// The pocket calculator behind the calendar form's second face, as a state machine with no
// widgets: the form turns buttons and keys into these calls and shows readout().
//
// Numbers are doubles, but what a person sees is decimal: a sum, difference or product is rounded
// to the decimals its exact value can have (0.1 + 0.2 reads 0.3, 100 - 99.9 reads 0.1), every
// result is shown with at most fifteen significant digits, and every operand is read back from
// the readout, so binary rounding never piles up from one operation to the next.
class Calculator {
public:
    // LastInput: what the last key was. "Ops" (after Percent) and "OPS" are different states.
    static inline const QString kNums = QStringLiteral("NUMS");
    static inline const QString kOps = QStringLiteral("OPS");
    static inline const QString kNeg = QStringLiteral("NEG");
    static inline const QString kPercentOps = QStringLiteral("Ops");

    // The message shown, under the title "Calculator", when a division by zero was asked for.
    static inline const QString kDivideByZero = QStringLiteral("Can't divide by zero.");

    // The readout always shows a decimal point: zero is "0.".
    const QString& readout() const { return readout_; }
    const QString& LastInput() const { return lastInput_; }
    const QString& pendingOperator() const { return pendingOperator_; }
    int operandCount() const { return operandCount_; }
    bool decimalFlag() const { return decimalFlag_; }

    // The readout starts from a caller's value ("125.5", "$1,000.00", "" for zero); with
    // digitsAdd, LastInput starts as "NUMS" so the first digit adds to that value instead of
    // replacing it.
    void SetValue(const QString& text, bool digitsAdd);

    // A digit 0..9. False when the readout is full and the digit was not taken.
    bool Digit(int digit);
    void DecimalPoint();
    // One of "+", "-", "X", "/", "=". False when it asked for a division by zero: the readout
    // then shows operand 1 again, and the caller shows kDivideByZero.
    bool Operator(const QString& op);
    void Percent();
    // Cancel: everything back to a fresh calculator.
    void Cancel();
    // Cancel Entry: only the number being typed (and its sign) goes.
    void CancelEntry();
    // OK: runs any pending operation, then answers the readout. ok is false when that operation
    // was a division by zero.
    QString Result(bool* ok = nullptr);

    // The readout's text for a number: fifteen significant digits at most, always a point.
    static QString ReadoutOf(double value);
    // The number a readout (or a caller's text) shows; 0 for anything else.
    static double ValueOf(const QString& text);

private:
    void StartNegative();

    QString readout_ = QStringLiteral("0.");
    QString lastInput_;
    QString pendingOperator_;
    double operand1_ = 0;
    double operand2_ = 0;
    int operandCount_ = 0;
    bool decimalFlag_ = false;
};

}  // namespace orvo::tools
