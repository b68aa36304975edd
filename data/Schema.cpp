// SPDX-License-Identifier: Apache-2.0
#include "data/Schema.h"

#include "data/Tables.h"

namespace lodrin {

namespace {

using dao::FieldType;

// A field that several tables hold has the same type and size in all of them.
constexpr int kGLTypeSize = 10;
constexpr int kVehDescSize = 100;
constexpr int kCustomerSize = 100;

constexpr std::array<FieldSchema, 12> kLDEmp{{
    {LDEmp::EmpEntry.name, FieldType::Long},
    {LDEmp::EmpID.name, FieldType::Long},
    {LDEmp::Name.name, FieldType::Text, 100},
    {LDEmp::StartDay.name, FieldType::Date},
    {LDEmp::EndDay.name, FieldType::Date},
    {LDEmp::StartJob.name, FieldType::Date},
    {LDEmp::WONumber.name, FieldType::Long},
    {LDEmp::WOID.name, FieldType::Long},
    {LDEmp::VehDesc.name, FieldType::Text, kVehDescSize},
    {LDEmp::Customer.name, FieldType::Text, kCustomerSize},
    {LDEmp::WorkDate.name, FieldType::Date},
    {LDEmp::GLType.name, FieldType::Text, kGLTypeSize},
}};

constexpr std::array<FieldSchema, 8> kLDTotals{{
    {LDTotals::ID, FieldType::Long},
    {LDTotals::EmpID, FieldType::Long},
    {LDTotals::WorkDate, FieldType::Date},
    {LDTotals::StartDay, FieldType::Date},
    {LDTotals::EndDay, FieldType::Date},
    {LDTotals::TotHrs, FieldType::Double},
    {LDTotals::JobCount, FieldType::Integer},
    {LDTotals::JobHrs, FieldType::Double},
}};

constexpr std::array<FieldSchema, 11> kLDHistory{{
    {LDHistory::ID, FieldType::Long},
    {LDHistory::EmpID, FieldType::Long},
    {LDHistory::WorkDate, FieldType::Date},
    {LDHistory::JobStart, FieldType::Date},
    {LDHistory::JobEnd, FieldType::Date},
    {LDHistory::WONumb, FieldType::Long},
    {LDHistory::WOID, FieldType::Long},
    {LDHistory::GLType, FieldType::Text, kGLTypeSize},
    {LDHistory::Hrs, FieldType::Double},
    {LDHistory::VehDesc, FieldType::Text, kVehDescSize},
    {LDHistory::Customer, FieldType::Text, kCustomerSize},
}};

constexpr std::array<FieldSchema, 5> kStatus{{
    {Status::ID, FieldType::Long},
    {Status::AcctType, FieldType::Text, 50},
    {Status::GLType, FieldType::Text, kGLTypeSize},
    {Status::GLDesc, FieldType::Text, 75},
    {Status::Description, FieldType::Text, 75},
}};

constexpr std::array<TableSchema, 4> kOwnTables{{
    {LDEmp::table, "Building/Verifying Kelvaro.mdb - LD Employee Table", kLDEmp},
    {LDTotals::table, "Building/Verifying Kelvaro.mdb - LD Totals Table", kLDTotals},
    {LDHistory::table, "Building/Verifying Kelvaro.mdb - LD History Table", kLDHistory},
    {Status::table, "Building/Verifying Kelvaro.mdb - Status Description Table", kStatus},
}};

}  // namespace

const std::array<TableSchema, 4>& OwnTables()
{
    return kOwnTables;
}

}  // namespace lodrin
