// SPDX-License-Identifier: Apache-2.0
// Tests of jet/sql/Parser.h: the number and text of every fault a statement or criterion can have.
#include "base/NumberedError.h"
#include "jet/sql/Parser.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>

namespace jet::sql {
namespace {

constexpr base::Date kToday{38061};

struct Failure {
    int number = 0;
    std::string text;
};

Failure FailureOf(const std::function<void()>& action)
{
    try {
        action();
    } catch (const base::NumberedError& error) {
        return {error.Number(), error.what()};
    }
    return {};
}

Failure InStatement(std::string_view text)
{
    return FailureOf([&] { (void)ParseStatement(text, kToday); });
}

Failure InCriteria(std::string_view text)
{
    return FailureOf([&] { (void)ParseCriteria(text, kToday); });
}

struct Case {
    const char* statement;
    int number;
    const char* text;  // nullptr: the number says all
};

class StatementFault : public testing::TestWithParam<Case> {};

TEST_P(StatementFault, HasItsNumberAndText)
{
    const Failure failure = InStatement(GetParam().statement);
    EXPECT_EQ(failure.number, GetParam().number) << GetParam().statement;
    if (GetParam().text != nullptr) {
        EXPECT_EQ(failure.text, GetParam().text);
    }
}

// What the program's own statements become when a value is missing or odd.
INSTANTIATE_TEST_SUITE_P(
    Expressions, StatementFault,
    testing::Values(
        Case{"SELECT PIN FROM Profile WHERE ProfileNumber = ", 3075,
             "Syntax error (missing operator) in query expression 'ProfileNumber ='."},
        Case{"SELECT Count(ID) as JobCt FROM LDHistory WHERE EmpID =  AND WorkDate = #3/15/2004#",
             3075,
             "Syntax error (missing operator) in query expression 'EmpID =  AND WorkDate = "
             "#3/15/2004#'."},
        Case{"SELECT * FROM LDHistory WHERE EmpID = 5 AND WorkDate = ##", 3075,
             "Syntax error in date in query expression 'EmpID = 5 AND WorkDate = ##'."},
        Case{"SELECT * FROM LDHistory WHERE EmpID = 5 AND WorkDate = #21.11.2026# ORDER BY "
             "JobStart DESC;",
             3075,
             "Syntax error in date in query expression 'EmpID = 5 AND WorkDate = #21.11.2026#'."},
        Case{"UPDATE Workorder SET Progress = 'Bob's car' WHERE EntryNumber = 5", 3075,
             "Syntax error (missing operator) in query expression ''Bob's car' WHERE EntryNumber = "
             "5'."},
        Case{"UPDATE Workorder SET Progress = 'Bob's car' WHERE EntryNumber = 5;", 3075,
             "Syntax error (missing operator) in query expression ''Bob's car' WHERE EntryNumber = "
             "5;'."},
        Case{"UPDATE Workorder SET Progress = 'don't won't' WHERE EntryNumber = 5", 3075,
             "Syntax error (missing operator) in query expression ''don't won't''."},
        Case{"UPDATE Workorder SET Progress = 'abc'' WHERE EntryNumber = 5", 3075,
             "Syntax error in string in query expression ''abc'' WHERE EntryNumber = 5'."},
        Case{"SELECT * FROM T WHERE Price = 1,5", 3075,
             "Syntax error (comma) in query expression 'Price = 1,5'."},
        Case{"SELECT * FROM T WHERE (A = 1", 3075,
             "Missing ), ], or Item in query expression '(A = 1'."},
        Case{"SELECT * FROM T WHERE A = 1) AND B = 2", 3075,
             "Extra ) in query expression 'A = 1) AND B = 2'."},
        Case{"SELECT * FROM T WHERE A In 'a'", 3075,
             "In operator without () in query expression 'A In 'a''."},
        Case{"SELECT * FROM T WHERE A Between 1", 3075,
             "Between operator without And in query expression 'A Between 1'."},
        Case{"SELECT * FROM T WHERE A Is 5 ORDER BY A", 3075,
             "Invalid use of Is operator in query expression 'A Is 5'."},
        Case{"SELECT * FROM T WHERE A.=1", 3075,
             "Invalid use of '.', '!', or '()' in query expression 'A.=1'."},
        Case{"SELECT * FROM T WHERE |A| = 1", 3075,
             "Invalid use of vertical bars in query expression '|A| = 1'."},
        Case{"SELECT Left(Name) FROM T", 3075,
             "Wrong number of arguments used with function in query expression 'Left(Name)'."},
        Case{"SELECT * FROM T WHERE A = 1.2.3", 3075,
             "Syntax error in number in query expression 'A = 1.2.3'."},
        Case{"SELECT * FROM T WHERE A = @", 3075, "Syntax error in query expression 'A = @'."},
        Case{"SELECT * FROM T WHERE A = 5 B = 6", 3075,
             "Syntax error (missing operator) in query expression 'A = 5 B = 6'."},
        Case{"SELECT * FROM T WHERE WO# = 5", 3075,
             "Syntax error (missing operator) in query expression 'WO# = 5'."},
        Case{"SELECT A B FROM T", 3075,
             "Syntax error (missing operator) in query expression 'A B'."},
        Case{"SELECT Count(ID) JobCt, Sum(Hrs) FROM T", 3075,
             "Syntax error (missing operator) in query expression 'Count(ID) JobCt'."},
        Case{"INSERT INTO T (A) VALUES (1 2)", 3075,
             "Syntax error (missing operator) in query expression '1 2'."}));

INSTANTIATE_TEST_SUITE_P(
    Clauses, StatementFault,
    testing::Values(
        Case{"", 3129, nullptr}, Case{"FETCH * FROM T", 3129, nullptr},
        Case{"SELECT FROM T", 3141, nullptr}, Case{"SELECT A,, B FROM T", 3141, nullptr},
        Case{"SELECT A AS FROM T", 3141, nullptr}, Case{"SELECT TOP A B FROM T", 3141, nullptr},
        Case{"SELECT * WHERE A = 1", 3141, nullptr}, Case{"SELECT A", 3067, nullptr},
        Case{"SELECT *", 3067, nullptr}, Case{"SELECT * FROM", 3131, nullptr},
        Case{"SELECT * FROM 5", 3131, nullptr}, Case{"SELECT * FROM A, B", 3131, nullptr},
        Case{"SELECT * FROM A INNER JOIN B ON A.x = B.x", 3131, nullptr},
        Case{"SELECT * FROM A UNION SELECT * FROM B", 3131, nullptr},
        Case{"SELECT * FROM T WHERE", 3145, nullptr},
        Case{"SELECT * FROM T WHERE ORDER BY A", 3145, nullptr},
        Case{"SELECT * FROM T ORDER BY", 3138, nullptr},
        Case{"SELECT * FROM T ORDER A", 3138, nullptr},
        Case{"SELECT * FROM T ORDER BY A B", 3138, nullptr},
        Case{"SELECT * FROM T ORDER BY A,", 3138, nullptr},
        Case{"SELECT * FROM T; x", 3142, nullptr}, Case{"SELECT * FROM T;;", 3142, nullptr},
        Case{"SELECT * FROM [T", 3126, "Invalid bracketing of name '[T'."},
        Case{"SELECT * FROM T WHERE [A = 1", 3126, nullptr}, Case{"UPDATE T", 3144, nullptr},
        Case{"UPDATE T SET A", 3144, nullptr}, Case{"UPDATE T SET A = ", 3144, nullptr},
        Case{"UPDATE T SET A = 1 WHERE", 3145, nullptr},
        Case{"UPDATE T SET A = 1; x", 3142, nullptr}, Case{"INSERT T VALUES (1)", 3134, nullptr},
        Case{"INSERT INTO T VALUES 1", 3134, nullptr},
        Case{"INSERT INTO T (A,) VALUES (1)", 3134, nullptr},
        Case{"INSERT INTO T VALUES (1) x", 3137, nullptr}, Case{"DELETE T", 3130, nullptr},
        Case{"DELETE * T", 3130, nullptr}, Case{"DELETE * FROM T WHERE", 3145, nullptr}));

struct CriteriaCase {
    const char* criteria;
    const char* text;
};

class CriteriaFault : public testing::TestWithParam<CriteriaCase> {};

TEST_P(CriteriaFault, Is3077WithItsText)
{
    const Failure failure = InCriteria(GetParam().criteria);
    EXPECT_EQ(failure.number, 3077);
    EXPECT_EQ(failure.text, GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Find, CriteriaFault,
    testing::Values(CriteriaCase{"EmpID = ", "Syntax error (missing operator) in expression."},
                    CriteriaCase{"", "Syntax error (missing operator) in expression."},
                    CriteriaCase{"GLType = 'O'Neil'",
                                 "Syntax error (missing operator) in expression."},
                    CriteriaCase{"GLType = 'BL", "Syntax error in string in expression."},
                    CriteriaCase{"EmpID = 5;", "Syntax error in expression."},
                    CriteriaCase{"WorkDate = ##", "Syntax error in date in expression."},
                    CriteriaCase{"[EmpID = 5", "Missing ), ], or Item in expression."},
                    CriteriaCase{"(EmpID = 5", "Missing ), ], or Item in expression."}));

TEST(ParserLimits, DeepNestingIsAnErrorAndNoOverflow)
{
    const std::string open(20000, '(');
    EXPECT_EQ(InCriteria(open + "1").number, 3077);
    EXPECT_EQ(InCriteria(open + "1").text, "Expression too complex in expression.");
    std::string nots;
    for (int i = 0; i < 10000; ++i)
        nots += "Not ";
    EXPECT_EQ(InCriteria(nots + "1").number, 3077);
    EXPECT_EQ(InCriteria(std::string(30000, '-') + "1").number, 3077);
}

TEST(ParserLimits, LongChainsAreAnErrorAndNoOverflow)
{
    std::string chain = "1";
    for (int i = 0; i < 10000; ++i)
        chain += "+1";
    EXPECT_EQ(InCriteria(chain).text, "Expression too complex in expression.");
}

TEST(ParserLimits, ChainsOfManyComparisonsAreFine)
{
    std::string chain = "A = 0";
    for (int i = 1; i < 300; ++i)
        chain += " Or A = " + std::to_string(i);
    EXPECT_EQ(InCriteria(chain).number, 0);
    std::string list = "A In (0";
    for (int i = 1; i < 5000; ++i)
        list += ", " + std::to_string(i);
    EXPECT_EQ(InCriteria(list + ")").number, 0);
}

TEST(ParserLimits, TextBeyondTheLimitIsTooComplex)
{
    EXPECT_EQ(InStatement("SELECT * FROM T WHERE A = '" + std::string(70000, 'x') + "'").number,
              3360);
    EXPECT_EQ(InStatement("SELECT * FROM T WHERE A = '" + std::string(60000, 'x') + "'").number, 0);
}

}  // namespace
}  // namespace jet::sql
