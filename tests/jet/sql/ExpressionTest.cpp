// SPDX-License-Identifier: Apache-2.0
// Tests of jet/sql/Evaluator.h: what expressions without fields give.
#include "base/Calendar.h"
#include "base/NumberedError.h"
#include "jet/sql/Bind.h"
#include "jet/sql/Evaluator.h"
#include "jet/sql/Parser.h"
#include "tests/support/ErrorOf.h"

#include <gtest/gtest.h>

namespace jet::sql {
namespace {

using base::Value;

const Environment& World()
{
    static const Environment world{[] { return base::Date{38061.5}; }, {}};
    return world;
}

Value Eval(std::string_view text)
{
    const ExpressionPtr expression = ParseCriteria(text, base::Date{38061});
    BindFunctions(*expression);
    std::vector<std::string> unknown;
    BindNames(*expression, {}, unknown);
    if (!unknown.empty()) throw base::NumberedError(3070, {unknown.front()});
    BindTypes(*expression, {});
    return Evaluate(*expression, NoRow(), World());
}

int ErrorOf(std::string_view text)
{
    return tests::ErrorOf([&] { (void)Eval(text); });
}

const Value kTrue = true;
const Value kFalse = false;
const Value kNull;

Value Int(std::int32_t value)
{
    return value;
}

TEST(ExpressionTest, OperatorsBindInTheirRank)
{
    EXPECT_EQ(Eval("1+2*3"), Int(7));
    EXPECT_EQ(Eval("(1+2)*3"), Int(9));
    EXPECT_EQ(Eval("-2^2"), Value(-4.0));
    EXPECT_EQ(Eval("2^-1"), Value(0.5));
    EXPECT_EQ(Eval("7\\2*2"), Int(1));     // * before the integer division
    EXPECT_EQ(Eval("7 Mod 2+1"), Int(2));  // Mod before the sum
    EXPECT_EQ(Eval("1+1 & 2"), Value("22"));
    EXPECT_EQ(Eval("10-2-3"), Int(5));
    EXPECT_EQ(Eval("Not 1 = 2"), kTrue);
    EXPECT_EQ(Eval("1=1 Or 1=1 And 1=2"), kTrue);
    EXPECT_EQ(Eval("1 Between 0 And 2 And 1=1"), kTrue);
    EXPECT_EQ(Eval("False Imp True Eqv False"), kTrue);
    EXPECT_EQ(Eval("True Xor True Or True"), kFalse);
}

TEST(ExpressionTest, NumbersAreIntegersWhereTheyFit)
{
    EXPECT_EQ(Eval("2147483647+1"), Value(2147483648.0));
    EXPECT_EQ(Eval("6/2"), Value(3.0));
    EXPECT_EQ(Eval(".5+0.25"), Value(0.75));
    EXPECT_EQ(Eval("1E3"), Value(1000.0));
    EXPECT_EQ(Eval("&H10"), Int(16));
    EXPECT_EQ(Eval("&o17"), Int(15));
    EXPECT_EQ(Eval("7.6 \\ 2"), Int(4));
    EXPECT_EQ(Eval("-7 Mod 3"), Int(-1));
}

TEST(ExpressionTest, DivisionByZeroIsNull)
{
    EXPECT_EQ(Eval("1/0"), kNull);
    EXPECT_EQ(Eval("1\\0"), kNull);
    EXPECT_EQ(Eval("1 Mod 0"), kNull);
}

TEST(ExpressionTest, NullWithAnythingIsNullButForConcatenation)
{
    EXPECT_EQ(Eval("1+Null"), kNull);
    EXPECT_EQ(Eval("Null='a'"), kNull);
    EXPECT_EQ(Eval("Null = Null"), kNull);
    EXPECT_EQ(Eval("Null & 'a'"), Value("a"));
    EXPECT_EQ(Eval("Null & Null"), kNull);
    EXPECT_EQ(Eval("'a' + Null"), kNull);
    EXPECT_EQ(Eval("-Null"), kNull);
    EXPECT_EQ(Eval("Left(Null, 1) <> '@'"), kNull);
}

TEST(ExpressionTest, LogicHasThreeValues)
{
    EXPECT_EQ(Eval("Null And False"), kFalse);
    EXPECT_EQ(Eval("Null And True"), kNull);
    EXPECT_EQ(Eval("Null Or True"), kTrue);
    EXPECT_EQ(Eval("Null Or False"), kNull);
    EXPECT_EQ(Eval("Not Null"), kNull);
    EXPECT_EQ(Eval("Null Xor True"), kNull);
    EXPECT_EQ(Eval("Null Imp True"), kTrue);
    EXPECT_EQ(Eval("False Imp Null"), kTrue);
    EXPECT_EQ(Eval("Null Eqv Null"), kNull);
    EXPECT_EQ(Eval("Null Is Null"), kTrue);
    EXPECT_EQ(Eval("Null Is Not Null"), kFalse);
}

TEST(ExpressionTest, InIsNullWhenANullHidesTheAnswer)
{
    EXPECT_EQ(Eval("1 In (1, Null)"), kTrue);
    EXPECT_EQ(Eval("2 In (1, Null)"), kNull);
    EXPECT_EQ(Eval("Null In (1)"), kNull);
    EXPECT_EQ(Eval("2 In (1, 3)"), kFalse);
    EXPECT_EQ(Eval("2 Not In(1,3)"), kTrue);
    EXPECT_EQ(Eval("'estimate' In('WorkOrder', 'Estimate')"), kTrue);
}

TEST(ExpressionTest, BetweenIncludesBothEnds)
{
    EXPECT_EQ(Eval("1 Between 1 And 3"), kTrue);
    EXPECT_EQ(Eval("3 Between 1 And 3"), kTrue);
    EXPECT_EQ(Eval("4 Between 1 And 3"), kFalse);
    EXPECT_EQ(Eval("4 Not Between 1 And 3"), kTrue);
    EXPECT_EQ(Eval("4 Between Null And 3"), kNull);
}

TEST(ExpressionTest, TextComparesWithoutCaseAndTrailingBlanks)
{
    EXPECT_EQ(Eval("'employee' = 'EMPLOYEE'"), kTrue);
    EXPECT_EQ(Eval("'a' = 'a  '"), kTrue);
    EXPECT_EQ(Eval("' a' = 'a'"), kFalse);
    EXPECT_EQ(Eval("'' <> '@'"), kTrue);
    EXPECT_EQ(Eval("'abc' < 'ABD'"), kTrue);
    EXPECT_EQ(Eval("\"it's\" = 'it''s'"), kTrue);
}

TEST(ExpressionTest, BooleansAreMinusOneAndZero)
{
    EXPECT_EQ(Eval("True = -1"), kTrue);
    EXPECT_EQ(Eval("True = 1"), kFalse);
    EXPECT_EQ(Eval("Yes + 1"), Int(0));
    EXPECT_EQ(Eval("Off = 0"), kTrue);
}

TEST(ExpressionTest, DatesCountInDays)
{
    EXPECT_EQ(Eval("#3/16/2004# - #3/15/2004#"), Value(1.0));
    EXPECT_EQ(Eval("#3/15/2004# + 1"), Value(base::Date{38062}));
    EXPECT_EQ(Eval("#3/15/2004# = 38061"), kTrue);
    EXPECT_EQ(Eval("#3/15/2004 8:00 AM# = #3/15/2004#"), kFalse);
}

TEST(ExpressionTest, TextAgainstNumberDateOrBooleanIsATypeMismatch)
{
    for (const char* text :
         {"1 = '1'", "'a' < 1", "#1/1/2004# = '1/1/2004'", "True = 'True'", "1 In ('1')",
          "1 Between '0' And '2'", "'a' And True", "Not 'a'", "Left('a',1) = 1", "1 + 'a'"})
        EXPECT_EQ(ErrorOf(text), 3464) << text;
}

TEST(ExpressionTest, TextThatSpellsANumberTakesPartInArithmetic)
{
    EXPECT_EQ(Eval("1 + '2'"), Value(3.0));
    EXPECT_EQ(Eval("'1' + '2'"), Value("12"));
    EXPECT_EQ(Eval("'3' * '4'"), Value(12.0));
}

TEST(ExpressionTest, LikeKnowsRunsCharactersDigitsAndSets)
{
    EXPECT_EQ(Eval("'Smith, Ann' Like 'smith*'"), kTrue);
    EXPECT_EQ(Eval("'abc' Like 'a?c'"), kTrue);
    EXPECT_EQ(Eval("'a1c' Like 'a#c'"), kTrue);
    EXPECT_EQ(Eval("'abc' Like 'a#c'"), kFalse);
    EXPECT_EQ(Eval("'b' Like '[a-c]'"), kTrue);
    EXPECT_EQ(Eval("'d' Like '[!a-c]'"), kTrue);
    EXPECT_EQ(Eval("'*' Like '[*]'"), kTrue);
    EXPECT_EQ(Eval("'a%' Like 'a%'"), kTrue);
    EXPECT_EQ(Eval("'ab' Like 'a_'"), kFalse);
    EXPECT_EQ(Eval("'' Like '*'"), kTrue);
    EXPECT_EQ(Eval("Null Like '*'"), kNull);
    EXPECT_EQ(Eval("'abc' Not Like 'a*'"), kFalse);
    EXPECT_EQ(ErrorOf("'a' Like '[a'"), 3071);
}

TEST(ExpressionTest, LikeOfManyRunsEndsInBoundedTime)
{
    std::string pattern;
    for (int i = 0; i < 1000; ++i)
        pattern += "*a";
    EXPECT_EQ(Eval("'" + std::string(5000, 'a') + "b' Like '" + pattern + "'"), kFalse);
}

TEST(ExpressionTest, TextFunctions)
{
    EXPECT_EQ(Eval("Left('@Smith', 1)"), Value("@"));
    EXPECT_EQ(Eval("LEFT('ab', 9)"), Value("ab"));
    EXPECT_EQ(Eval("Right('abc', 2)"), Value("bc"));
    EXPECT_EQ(Eval("Mid('abcdef', 2, 3)"), Value("bcd"));
    EXPECT_EQ(Eval("Len('abc ')"), Int(4));
    EXPECT_EQ(Eval("Trim('  a ') & '|' & LTrim(' a ') & '|' & RTrim(' a ')"), Value("a|a | a"));
    EXPECT_EQ(Eval("UCase('abé')"), Value("ABÉ"));
    EXPECT_EQ(Eval("InStr('abcABC', 'C')"), Int(3));
    EXPECT_EQ(Eval("InStr(4, 'abcABC', 'c')"), Int(6));
    EXPECT_EQ(Eval("StrComp('a', 'B')"), Int(-1));
    EXPECT_EQ(Eval("StrComp('a', 'B', 0)"), Int(1));
    EXPECT_EQ(Eval("Space(3) & String(2, 'x')"), Value("   xx"));
    EXPECT_EQ(Eval("Chr(65) & Asc('a')"), Value("A97"));
    EXPECT_EQ(Eval("Str(.5)"), Value(" .5"));
    EXPECT_EQ(Eval("Val('12 E')"), Value(12.0));
    EXPECT_EQ(Eval("Hex(255) & Oct(8)"), Value("FF10"));
    EXPECT_EQ(Eval("Format(1/3, '##.00')"), Value(".33"));
    EXPECT_EQ(Eval("CStr(5)"), Value("5"));
}

TEST(ExpressionTest, NumberFunctions)
{
    EXPECT_EQ(Eval("Abs(-2.5)"), Value(2.5));
    EXPECT_EQ(Eval("Int(-2.5)"), Value(-3.0));
    EXPECT_EQ(Eval("Fix(-2.5)"), Value(-2.0));
    EXPECT_EQ(Eval("Sgn(-3)"), Int(-1));
    EXPECT_EQ(Eval("CInt(2.5)"), Value(std::int16_t{2}));
    EXPECT_EQ(Eval("CLng('3')"), Int(3));
    EXPECT_EQ(Eval("CCur(0.00025)"), Value(base::Currency{2}));
    EXPECT_EQ(Eval("CBool(2)"), kTrue);
    EXPECT_EQ(Eval("Sqr(16)"), Value(4.0));
    EXPECT_EQ(Eval("IsNumeric('1x')"), kFalse);
    EXPECT_EQ(Eval("IsNull(Null)"), kTrue);
}

TEST(ExpressionTest, DateFunctions)
{
    EXPECT_EQ(Eval("Now()"), Value(base::Date{38061.5}));
    EXPECT_EQ(Eval("Date()"), Value(base::Date{38061}));
    EXPECT_EQ(Eval("Time()"), Value(base::Date{0.5}));
    EXPECT_EQ(Eval("Year(#3/15/2004#)*10000 + Month(#3/15/2004#)*100 + Day(#3/15/2004#)"),
              Int(20040315));
    EXPECT_EQ(Eval("Hour(#8:05:09#)*10000 + Minute(#8:05:09#)*100 + Second(#8:05:09#)"),
              Int(80509));
    EXPECT_EQ(Eval("Weekday(#3/15/2004#)"), Int(2));                       // a Monday
    EXPECT_EQ(Eval("DateSerial(2004, 2, 30)"), Value(base::Date{38047}));  // 1 March
    EXPECT_EQ(Eval("DateAdd('m', 1, #1/31/2004#)"), Eval("#2/29/2004#"));
    EXPECT_EQ(Eval("DateDiff('d', #3/1/2004#, #3/15/2004#)"), Int(14));
    EXPECT_EQ(Eval("DateDiff('n', #8:00#, #9:30#)"), Int(90));
    EXPECT_EQ(Eval("DatePart('q', #3/15/2004#)"), Int(1));
    EXPECT_EQ(Eval("DateValue('3/15/2004 8:00 AM')"), Value(base::Date{38061}));
    EXPECT_EQ(Eval("IsDate('3/15/2004')"), kTrue);
    EXPECT_EQ(Eval("CDate('8:00 AM')"), Value(base::Date{8.0 / 24}));
}

TEST(ExpressionTest, OnlyTheBranchThatIsNeededIsEvaluated)
{
    EXPECT_EQ(Eval("IIf(True, 1, Left('a', -1))"), Int(1));
    EXPECT_EQ(Eval("IIf(Null, 1, 2)"), Int(2));
    EXPECT_EQ(Eval("Switch(False, 1, True, 2)"), Int(2));
    EXPECT_EQ(Eval("Switch(False, 1)"), kNull);
    EXPECT_EQ(Eval("Choose(2, 'a', 'b')"), Value("b"));
    EXPECT_EQ(Eval("Choose(3, 'a', 'b')"), kNull);
}

TEST(ExpressionTest, FailuresOfFunctionsHaveTheEnginesNumbers)
{
    EXPECT_EQ(ErrorOf("Left('a', -1)"), 3071);
    EXPECT_EQ(ErrorOf("CInt(40000)"), 3071);
    EXPECT_EQ(ErrorOf("CInt('x')"), 3464);
    EXPECT_EQ(ErrorOf("Exp(1000)"), 3071);
    EXPECT_EQ(ErrorOf("1E300*1E300"), 3071);
    EXPECT_EQ(ErrorOf("Space(100000)"), 3071);
    EXPECT_EQ(Eval("Val(Null)"), kNull);
}

TEST(ExpressionTest, FunctionsOfOtherProgramsAreUnknown)
{
    for (const char* text : {"Nz(1, 2)", "Replace('a','b','c')", "DLookup('a','b')", "MyOwn(1)"})
        EXPECT_EQ(ErrorOf(text), 3085) << text;
}

TEST(ExpressionTest, CriteriaFindFaultsInTheirOrder)
{
    const auto bind = [](std::string_view text) {
        try {
            const ExpressionPtr criteria = ParseCriteria(text, base::Date{38061});
            Scope scope{"", {{"EmpID", ValueKind::Number, 0}, {"Name", ValueKind::Text, 1}}};
            BindCriteria(*criteria, scope);
        } catch (const base::NumberedError& error) {
            return std::to_string(error.Number()) + " " + error.what();
        }
        return std::string();
    };
    EXPECT_EQ(bind("EmpID = abc"), "3070 " + base::ErrorText(3070, {"abc"}));
    EXPECT_EQ(bind("EmpID = '7'"), "3464 " + base::ErrorText(3464));
    EXPECT_EQ(bind("Foo(abc) = 1"), "3085 " + base::ErrorText(3085, {"Foo"}));
    EXPECT_EQ(bind("abc = '7' And EmpID = '7'").substr(0, 4), "3070");
    EXPECT_EQ(bind("Sum(EmpID) = 1").substr(0, 4), "3095");
    EXPECT_EQ(bind("Name").substr(0, 4), "3464");
    EXPECT_EQ(bind("[empid] = -1 And name Is Not Null"), "");
}

}  // namespace
}  // namespace jet::sql
