// SPDX-License-Identifier: Apache-2.0
#include "bench/History.h"

#include <array>

namespace bench {

Job JobAt(int number)
{
    static constexpr std::array<const char*, 4> types = {"BL", "RL", "FL", "ML"};
    static constexpr std::array<const char*, 5> vehicles = {
        "2014 Chevrolet Silverado 1500 LT", "2019 Honda Civic EX", "2008 Ford F-150",
        "2016 Toyota Camry SE", "2021 Subaru Outback Limited"};
    const int jobsOfAllDays = number / kEmployees;
    const double day = kFirstDay + jobsOfAllDays / kJobsOfADay;
    const double start = (8 + 2 * (jobsOfAllDays % kJobsOfADay)) / 24.0;
    const int order = 10000 + number / 7;
    return {.employee = 1 + number % kEmployees,
            .workDate = day,
            .jobStart = start,
            .jobEnd = start + 1.5 / 24,
            .hours = 1.5,
            .workOrder = order,
            .entryNumber = order + 500000,
            .laborType = types[static_cast<std::size_t>(number) % types.size()],
            .vehicle = vehicles[static_cast<std::size_t>(order) % vehicles.size()],
            .customer = "Customer " + std::to_string(order)};
}

void CreateHistory(dao::Database& database)
{
    using dao::FieldType;
    dao::TableDef table{std::string(kTable)};
    dao::FieldDef counter = dao::TableDef::CreateField("ID", FieldType::Long);
    counter.attributes = dao::kAutoIncrField;
    table.Append(counter);
    table.Append(dao::TableDef::CreateField("EmpID", FieldType::Long));
    table.Append(dao::TableDef::CreateField("WorkDate", FieldType::Date));
    table.Append(dao::TableDef::CreateField("JobStart", FieldType::Date));
    table.Append(dao::TableDef::CreateField("JobEnd", FieldType::Date));
    table.Append(dao::TableDef::CreateField("WONumb", FieldType::Long));
    table.Append(dao::TableDef::CreateField("WOID", FieldType::Long));
    table.Append(dao::TableDef::CreateField("GLType", FieldType::Text, 10));
    table.Append(dao::TableDef::CreateField("Hrs", FieldType::Double));
    table.Append(dao::TableDef::CreateField("VehDesc", FieldType::Text, 100));
    table.Append(dao::TableDef::CreateField("Customer", FieldType::Text, 100));
    database.Append(table);
}

void Append(dao::Recordset& history, const Job& job)
{
    history.AddNew();
    history["EmpID"] = job.employee;
    history["WorkDate"] = base::Date{job.workDate};
    history["JobStart"] = base::Date{job.jobStart};
    history["JobEnd"] = base::Date{job.jobEnd};
    history["WONumb"] = job.workOrder;
    history["WOID"] = job.entryNumber;
    history["GLType"] = job.laborType;
    history["Hrs"] = job.hours;
    history["VehDesc"] = job.vehicle;
    history["Customer"] = job.customer;
    history.Update();
}

}  // namespace bench
