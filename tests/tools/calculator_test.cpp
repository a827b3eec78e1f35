#include <gtest/gtest.h>

#include "tests/support/qt_print.h"
#include "tools/calculator.h"

namespace orvo::tools {
namespace {

// Presses keys as a person would: digits, ".", "+-X/=", "%", "C" (Cancel), "E" (Cancel Entry).
// Answers false when a division by zero was refused on the way.
bool Keys(Calculator& calc, const QString& keys) {
    bool divided = true;
    for (const QChar k : keys) {
        if (k.isDigit())
            calc.Digit(k.digitValue());
        else if (k == QLatin1Char('.'))
            calc.DecimalPoint();
        else if (k == QLatin1Char('%'))
            calc.Percent();
        else if (k == QLatin1Char('C'))
            calc.Cancel();
        else if (k == QLatin1Char('E'))
            calc.CancelEntry();
        else
            divided = calc.Operator(QString(k)) && divided;
    }
    return divided;
}

QString After(const QString& keys) {
    Calculator calc;
    Keys(calc, keys);
    return calc.readout();
}

TEST(CalculatorTest, DigitsAndThePointBuildTheReadout) {
    EXPECT_EQ(Calculator().readout(), "0.");
    EXPECT_EQ(After("0"), "0.");
    EXPECT_EQ(After("007"), "7.");
    EXPECT_EQ(After("125"), "125.");
    EXPECT_EQ(After("12.05"), "12.05");
    EXPECT_EQ(After(".5"), "0.5");
    EXPECT_EQ(After("1..5"), "1.5");
    // A new number after an operator starts from "0." with no decimals pending.
    EXPECT_EQ(After("1.5+2"), "2.");
}

TEST(CalculatorTest, OperatorsChainLeftToRight) {
    EXPECT_EQ(After("2+3="), "5.");
    EXPECT_EQ(After("2+3X4="), "20.");
    EXPECT_EQ(After("9-12="), "-3.");
    EXPECT_EQ(After("7/2="), "3.5");
    EXPECT_EQ(After("2+3+"), "5.");
    // "=" hands its operand on: the next number replaces the result.
    EXPECT_EQ(After("2+3=4="), "4.");
}

TEST(CalculatorTest, MoneyReadsAsTyped) {
    EXPECT_EQ(After(".1+.2="), "0.3");
    EXPECT_EQ(After("1.1X1.1="), "1.21");
    EXPECT_EQ(After("19.99X3="), "59.97");
    EXPECT_EQ(After("100-99.9="), "0.1");
    EXPECT_EQ(After("4.35X100="), "435.");
    EXPECT_EQ(After("1.15%"), "0.0115");
    EXPECT_EQ(After("1/3="), "0.333333333333333");
    // Results feed on as shown, so the error of one step is not carried into the next.
    EXPECT_EQ(After("1/3X3="), "0.999999999999999");
    EXPECT_EQ(After(".1+.2-.3="), "0.");
}

TEST(CalculatorTest, MinusStartsANegativeNumber) {
    EXPECT_EQ(After("-5"), "-5.");
    EXPECT_EQ(After("-5+2="), "-3.");
    EXPECT_EQ(After("-.5"), "-0.5");
    // After an operator a minus is the sign of the next number, and the "+" stays pending.
    EXPECT_EQ(After("5+-3="), "2.");
    EXPECT_EQ(After("5X-3="), "-15.");
    // A minus on a negative readout cancels its sign: the readout is always a number.
    Calculator twice;
    Keys(twice, "-6/-");
    EXPECT_EQ(twice.readout(), "6.");
    Keys(twice, "=");
    EXPECT_EQ(twice.readout(), "6.");
    // After "=" a minus is an operator again.
    EXPECT_EQ(After("5=-2="), "3.");
    EXPECT_EQ(After("5+3=-2="), "6.");
    // Cancel Entry drops the sign with the number.
    Calculator calc;
    Keys(calc, "5+-E4=");
    EXPECT_EQ(calc.readout(), "9.");
}

TEST(CalculatorTest, PercentIsAnOperandOfItsOwn) {
    Calculator calc;
    Keys(calc, "200+10%");
    EXPECT_EQ(calc.readout(), "0.1");
    EXPECT_EQ(calc.LastInput(), "Ops");
    EXPECT_NE(calc.LastInput(), Calculator::kOps);
    EXPECT_EQ(calc.pendingOperator(), "%");
    Keys(calc, "+");
    EXPECT_EQ(calc.readout(), "20.");
    Keys(calc, "5=");
    EXPECT_EQ(calc.readout(), "25.");
    EXPECT_EQ(After("200+10%="), "20.");
    EXPECT_EQ(After("50%"), "0.5");
}

TEST(CalculatorTest, DivisionByZeroKeepsTheFirstOperand) {
    Calculator calc;
    EXPECT_FALSE(Keys(calc, "10/0="));
    EXPECT_EQ(calc.readout(), "10.");
    EXPECT_EQ(calc.operandCount(), 1);
    EXPECT_TRUE(Keys(calc, "+5="));
    EXPECT_EQ(calc.readout(), "15.");

    Calculator atOk;
    Keys(atOk, "7/0");
    bool ok = true;
    EXPECT_EQ(atOk.Result(&ok), "7.");
    EXPECT_FALSE(ok);
}

TEST(CalculatorTest, CancelAndCancelEntry) {
    Calculator calc;
    Keys(calc, "12+34E5=");
    EXPECT_EQ(calc.readout(), "17.");
    Keys(calc, "C");
    EXPECT_EQ(calc.readout(), "0.");
    EXPECT_EQ(calc.operandCount(), 0);
    EXPECT_TRUE(calc.pendingOperator().isEmpty());
    Keys(calc, "3=");
    EXPECT_EQ(calc.readout(), "3.");
    Calculator negative;
    Keys(negative, "-");
    EXPECT_EQ(negative.readout(), "-0.");
    Keys(negative, "E");
    EXPECT_EQ(negative.readout(), "0.");
    Keys(negative, "4");
    EXPECT_EQ(negative.readout(), "4.");
}

TEST(CalculatorTest, ResultRunsThePendingOperation) {
    Calculator calc;
    Keys(calc, "12X3");
    EXPECT_EQ(calc.Result(), "36.");
    Calculator waiting;
    Keys(waiting, "12X");
    EXPECT_EQ(waiting.Result(), "12.");
    EXPECT_EQ(Calculator().Result(), "0.");
}

TEST(CalculatorTest, CallerValue) {
    // With digits adding, the caller's value is kept and extended.
    Calculator adds;
    adds.SetValue(QStringLiteral("12"), true);
    EXPECT_EQ(adds.readout(), "12.");
    Keys(adds, "3");
    EXPECT_EQ(adds.readout(), "123.");
    Calculator decimals;
    decimals.SetValue(QStringLiteral("$1,250.50"), true);
    EXPECT_EQ(decimals.readout(), "1250.5");
    Keys(decimals, "1");
    EXPECT_EQ(decimals.readout(), "1250.51");
    // Without, the value is only shown: the first digit replaces it.
    Calculator replaces;
    replaces.SetValue(QStringLiteral("12"), false);
    Keys(replaces, "3");
    EXPECT_EQ(replaces.readout(), "3.");
    Calculator junk;
    junk.SetValue(QStringLiteral("twelve"), true);
    EXPECT_EQ(junk.readout(), "0.");
}

TEST(CalculatorTest, TheReadoutHasRoomForFifteenDigits) {
    Calculator calc;
    for (int i = 0; i < 15; ++i)
        EXPECT_TRUE(calc.Digit(9));
    EXPECT_FALSE(calc.Digit(9));
    EXPECT_EQ(calc.readout(), "999999999999999.");
    Keys(calc, "X1000000=");
    EXPECT_EQ(calc.readout(), "9.99999999999999e+20");
    Keys(calc, "+1=");
    EXPECT_EQ(calc.readout(), "9.99999999999999e+20");
    Keys(calc, "C1=");
    EXPECT_EQ(calc.readout(), "1.");
}

}  // namespace
}  // namespace orvo::tools
