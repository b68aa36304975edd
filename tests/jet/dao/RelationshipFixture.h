// SPDX-License-Identifier: Apache-2.0
// RelationshipFixture: customers with orders and orders with lines, for tests of relationships.
#pragma once

#include "tests/jet/dao/DaoFixture.h"

namespace dao {

class RelationshipFixture : public DaoKindTest {
protected:
    RelationshipFixture()
    {
        TableDef customers("Customers");
        customers.Append(TableDef::CreateField("Id", FieldType::Long));
        customers.Append(TableDef::CreateField("Name", FieldType::Text, 40));
        customers.Append(Primary("Id"));
        database.Append(customers);
        TableDef orders("Orders");
        orders.Append(TableDef::CreateField("Number", FieldType::Long));
        orders.Append(TableDef::CreateField("Customer", FieldType::Long));
        orders.Append(Primary("Number"));
        database.Append(orders);
        TableDef lines("Lines");
        lines.Append(TableDef::CreateField("Order", FieldType::Long));
        FieldDef hours = TableDef::CreateField("Hrs", FieldType::Double);
        hours.validationRule = "<100";
        lines.Append(hours);
        database.Append(lines);
    }

    // Orders belong to customers, lines to orders.
    void Relate(int attributes)
    {
        database.Append(OrdersOfCustomers(attributes));
        database.Append(
            RelationDef{"OrdersLines", "Orders", "Lines", attributes, {{"Number", "Order"}}});
    }
    static RelationDef OrdersOfCustomers(int attributes)
    {
        return {"CustomersOrders", "Customers", "Orders", attributes, {{"Id", "Customer"}}};
    }

    // A table whose rows refer to each other.
    void MakeStaff(int attributes)
    {
        TableDef staff("Staff");
        staff.Append(TableDef::CreateField("Id", FieldType::Long));
        staff.Append(TableDef::CreateField("Boss", FieldType::Long));
        staff.Append(Primary("Id"));
        database.Append(staff);
        database.Append(RelationDef{"StaffStaff", "Staff", "Staff", attributes, {{"Id", "Boss"}}});
    }

    // Two customers; the first has two orders of two lines each.
    void Fill()
    {
        for (const char* sql :
             {"INSERT INTO Customers VALUES (1, 'Ann')", "INSERT INTO Customers VALUES (2, 'Bob')",
              "INSERT INTO Orders VALUES (10, 1)", "INSERT INTO Orders VALUES (11, 1)",
              "INSERT INTO Lines VALUES (10, 1)", "INSERT INTO Lines VALUES (10, 2)",
              "INSERT INTO Lines VALUES (11, 3)", "INSERT INTO Lines VALUES (11, 4)"})
            Run(sql);
    }

    void Run(std::string_view sql) { database.Execute(sql, kFailOnError); }
    [[nodiscard]] std::string Failing(std::string_view sql)
    {
        return FailureOf([&] { Run(sql); });
    }
    [[nodiscard]] std::vector<std::string> All(const std::string& table, const char* field)
    {
        Recordset rows = Open("SELECT * FROM [" + table + "]");
        return Column(rows, field);
    }
    using Texts = std::vector<std::string>;
};

}  // namespace dao
