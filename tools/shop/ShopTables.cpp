// SPDX-License-Identifier: Apache-2.0
#include "tools/shop/ShopTables.h"

#include "tools/shop/TableWish.h"
#include "tools/shop/Words.h"

namespace tools::shop {

namespace {

using jet::catalog::NewTable;
using enum jet::format::ColumnType;

NewTable ProfileTable()
{
    return TableWish("Profile")
        .Counter("ProfileNumber")
        .Field("Type", Text, 20)
        .Required()
        .Field("LastName", Text, 40)
        .Field("FirstName", Text, 30)
        .Field("MiddleInitial", Text, 1)
        .Text("Company", 60)
        .Text("Address1", 60)
        .Text("Address2", 60)
        .Text("City", 40)
        .Text("State", 2)
        .Text("Zip", 10)
        .Text("HomePhone", 20)
        .Text("WorkPhone", 20)
        .Text("CellPhone", 20)
        .Text("Fax", 20)
        .Text("Email", 80)
        .Text("Source", 30)
        .Text("PIN", 10)
        .Text("BadgeCode", 16)
        .Field("EmpRate", Currency)
        .Field("OvertimeRate", Currency)
        .Field("Commission", Single)
        .Field("Efficiency", Double)
        .Field("HireDate", Date)
        .Field("TermDate", Date)
        .Field("BirthDate", Date)
        .Field("DefaultDept", Integer)
        .Default("0")
        .Field("PriceLevel", Byte)
        .Default("1")
        .Fields(Boolean, {"Active", "Taxable", "SendMail", "NeedsTraining"})
        .Field("TaxID", Text, 16)
        .Field("CreditLimit", Currency)
        .Default("0")
        .Field("Balance", Currency)
        .Default("0")
        .Fields(Date, {"LastVisit", "DateCreated"})
        .Default("Now()")
        .Field("SyncKey", Guid)
        .Field("Notes", Memo)
        .Index("LastName", {{"LastName"}, {"FirstName"}})
        .Index("Type", {{"Type"}})
        .Index("Company", {{"Company"}});
}

NewTable ServiceItemTable()
{
    return TableWish("ServiceItem")
        .Counter("ServiceItemNumber")
        .Field("ProfileNumber", Long)
        .Field("ModelYear", Integer)
        .Rule(">=1900", "A model year has four digits.")
        .Text("Make", 30)
        .Text("Model", 40)
        .Text("Body", 12)
        .Text("Engine", 20)
        .Text("Transmission", 12)
        .Text("Color", 20)
        .Text("PaintCode", 12)
        .Text("Trim", 20)
        .Field("VIN", Text, 17)
        .Field("License", Text, 12)
        .Text("LicenseState", 2)
        .Field("Mileage", Long)
        .Field("ProductionDate", Date)
        .Fields(Boolean, {"FourWheelDrive", "Leased"})
        .Field("LastService", Date)
        .Field("Remarks", Memo)
        .Index("ProfileNumber", {{"ProfileNumber"}})
        .Unique("VIN", {{"VIN"}})
        .Index("MakeModel", {{"Make"}, {"Model"}, {"ModelYear", false}});
}

void AddOrderHead(TableWish& wish)
{
    wish.Counter("EntryNumber")
        .Field("WorkOrderNumber", Long)
        .Field("WOType", Text, 20)
        .Required()
        .Field("Archived", Boolean)
        .Field("ProfileNumber", Long)
        .Text("ProfileDescriptionL1", 100)
        .Text("ProfileDescriptionL2", 100)
        .Text("ProfileDescriptionL3", 100)
        .Field("ServiceItemNumber", Long)
        .Text("ServiceItemDescriptionL1", 100)
        .Text("ServiceItemDescriptionL2", 100)
        .Text("ServiceItemDescriptionL3", 100)
        .Text("VIN", 17)
        .Text("License", 12)
        .Text("Color", 20)
        .Text("PaintCode", 12)
        .Fields(Long, {"Mileage", "MileageOut"})
        .Text("InsuranceCompany", 60)
        .Text("ClaimNumber", 30)
        .Text("PolicyNumber", 30)
        .Text("Adjuster", 50)
        .Text("AdjusterPhone", 20)
        .Field("Deductible", Currency)
        .Default("0")
        .Field("DateOfLoss", Date)
        .Text("PointOfImpact", 30)
        .Text("Estimator", 30);
}

void AddOrderWork(TableWish& wish)
{
    wish.Fields(Long, {"BLTech", "RLTech", "FLTech", "MLTech"})
        .Field("DeptSequence", Integer)
        .Text("Progress", 50)
        .Field("Priority", Byte)
        .Default("3")
        .Fields(Date, {"DateCreated", "DatePromised", "DateScheduled", "Arrived", "Started",
                       "Completed", "Delivered", "Closed"});
    for (const std::string_view category :
         {"Body", "Refinish", "Frame", "Mech", "Struct", "Glass", "Other"}) {
        const std::string name(category);
        wish.Field(name + "Sold", Double).Default("0");
        wish.Field(name + "Worked", Double).Default("0");
        wish.Field(name + "Cost", Currency).Default("0");
    }
}

void AddOrderMoney(TableWish& wish)
{
    for (const char* total :
         {"PartsTotal", "PaintTotal", "SubletTotal", "TowingTotal", "StorageTotal", "LaborTotal",
          "DiscountTotal", "TaxTotal", "GrandTotal", "AmountPaid", "InsurancePays", "CustomerPays"})
        wish.Field(total, Currency).Default("0");
    wish.Fields(Double, {"TaxRate", "LaborRate", "PaintRate"})
        .Field("SupplementCount", Integer)
        .Default("0")
        .Fields(Boolean, {"Printed", "TotalLoss", "Drivable", "Warranty", "RentalNeeded",
                          "PhotosTaken", "Exported"})
        .Fields(Memo, {"AuditNotes", "Comments", "InternalNotes"});
}

NewTable WorkOrderTable()
{
    TableWish wish("WorkOrder");
    AddOrderHead(wish);
    AddOrderWork(wish);
    AddOrderMoney(wish);
    return wish.Index("WorkOrderNumber", {{"WorkOrderNumber"}})
        .Index("ProfileNumber", {{"ProfileNumber"}})
        .Index("Promised", {{"DatePromised", false}, {"WorkOrderNumber"}})
        .Index("TypeNumber", {{"WOType"}, {"WorkOrderNumber"}});
}

NewTable EstimateLineTable()
{
    return TableWish("EstimateLine")
        .Counter("LineID")
        .Field("EntryNumber", Long)
        .Required()
        .Field("LineNumber", Integer)
        .Text("Operation", 12)
        .Text("Description", 80)
        .Text("PartNumber", 30)
        .Text("PartType", 8)
        .Field("Quantity", Single)
        .Default("1")
        .Fields(Currency, {"UnitPrice", "ListPrice"})
        .Text("LaborType", 2)
        .Fields(Double, {"LaborHours", "PaintHours"})
        .Field("Supplement", Byte)
        .Fields(Boolean, {"Taxable", "Ordered", "Received"})
        .Field("LineNote", Memo)
        .Unique("EntryLine", {{"EntryNumber"}, {"LineNumber"}});
}

NewTable PartTable()
{
    TableWish wish("Part");
    wish.Field("PartNumber", Text, 30)
        .Text("Description", 80)
        .Field("VendorNumber", Long)
        .Fields(Currency, {"Cost", "ListPrice"})
        .Fields(Integer, {"OnHand", "OnOrder", "ReorderPoint"})
        .Default("0")
        .Text("Bin", 8);
    wish.Field("Weight", Numeric);
    wish.Fields(Date, {"LastSold", "LastOrdered"})
        .Field("Discontinued", Boolean)
        .Primary({{"PartNumber"}})
        .Index("VendorNumber", {{"VendorNumber"}, {"PartNumber"}});
    NewTable table = wish;
    for (auto& column : table.columns) {
        column.precision = 10;
        column.scale = 3;
    }
    return table;
}

NewTable PurchaseOrderTable()
{
    return TableWish("PurchaseOrder")
        .Counter("PONumber")
        .Fields(Long, {"VendorNumber", "EntryNumber"})
        .Fields(Date, {"Ordered", "Expected", "Received"})
        .Text("InvoiceNumber", 20)
        .Fields(Currency, {"Subtotal", "Freight", "Total"})
        .Field("Status", Text, 2)
        .Text("OrderedBy", 30)
        .Field("Remarks", Memo)
        .Index("VendorNumber", {{"VendorNumber"}})
        .Index("EntryNumber", {{"EntryNumber"}});
}

NewTable PaymentTable()
{
    return TableWish("Payment")
        .Counter("PaymentID")
        .Field("EntryNumber", Long)
        .Field("Received", Date)
        .Text("Method", 15)
        .Text("Reference", 30)
        .Field("Amount", Currency)
        .Rule("<>0", "A payment has an amount.")
        .Field("Deposited", Boolean)
        .Index("EntryNumber", {{"EntryNumber"}});
}

NewTable AttachmentTable()
{
    return TableWish("Attachment")
        .Counter("AttachmentID")
        .Field("EntryNumber", Long)
        .Field("Taken", Date)
        .Text("Caption", 100)
        .Field("FileHash", Binary, 16)
        .Field("Thumbnail", Ole)
        .Index("EntryNumber", {{"EntryNumber"}});
}

NewTable LaborTable()
{
    return TableWish("Labor")
        .Counter("LaborID")
        .Fields(Long, {"EmployeeID", "WONumber"})
        .Field("EmpRate", Currency)
        .Text("LastName", 40)
        .Text("FirstName", 30)
        .Text("GLType", 10)
        .Fields(Date, {"FlagDate", "TimeIN", "TimeOut"})
        .Field("HrsFlagged", Double)
        .Default("0")
        .Field("HrsActual", Double)
        .Default("0")
        .Field("WorkOrder", Long)
        .Text("MiscDesc", 100)
        .Field("Paid", Boolean)
        .Field("PayBatch", Long)
        .Default("0")
        .Field("PaidDate", Date)
        .Field("Adjusted", Boolean)
        .Index("EmployeeID", {{"EmployeeID"}, {"FlagDate"}})
        .Index("WONumber", {{"WONumber"}})
        .Index("WorkOrder", {{"WorkOrder"}})
        .Index("PayBatch", {{"PayBatch"}});
}

std::vector<NewTable> LookupTables()
{
    return {TableWish("GenLedger")
                .Field("GLCode", Text, 10)
                .Text("GLDescription", 75)
                .Text("GLType", 20)
                .Field("GLLaborFlag", Boolean)
                .Field("Balance", Currency)
                .Default("0")
                .Text("ExportCode", 20)
                .Primary({{"GLCode"}}),
            TableWish("Departments")
                .Counter("DeptID")
                .Text("Description", 50)
                .Field("Sequence", Integer)
                .Field("Active", Boolean)
                .Field("TargetHours", Single)
                .Index("Sequence", {{"Sequence"}}),
            TableWish("AutoLook")
                .Counter("LookID")
                .Field("Type", Text, 30)
                .Text("Description", 100)
                .Field("SortOrder", Integer)
                .Index("Type", {{"Type"}, {"SortOrder"}})};
}

// The program's own fields: numbers begin at 0, texts empty, dates without a value.
class ClockWish {
public:
    ClockWish(std::string_view table, std::string_view counter) : wish_(table)
    {
        wish_.Field(counter, Long);
    }
    ClockWish& Number(std::string_view name, jet::format::ColumnType type = Long)
    {
        wish_.Field(name, type).Default("0");
        return *this;
    }
    ClockWish& Text(std::string_view name, int size)
    {
        wish_.Text(name, size);
        return *this;
    }
    ClockWish& Time(std::string_view name)
    {
        wish_.Field(name, Date);
        return *this;
    }
    [[nodiscard]] NewTable Done() const
    {
        NewTable table = wish_;
        table.columns[0].autoNumber = true;
        return table;
    }

private:
    TableWish wish_;
};

}  // namespace

std::vector<NewTable> ManagementTables()
{
    std::vector<NewTable> tables = LookupTables();
    for (NewTable& table : std::vector{ProfileTable(), ServiceItemTable(), WorkOrderTable(),
                                       EstimateLineTable(), PartTable(), PurchaseOrderTable(),
                                       PaymentTable(), AttachmentTable(), LaborTable()})
        tables.push_back(std::move(table));
    return tables;
}

std::vector<NewTable> ClockTables()
{
    return {ClockWish("LDEmp", "EmpEntry")
                .Number("EmpID")
                .Text("Name", 100)
                .Time("StartDay")
                .Time("EndDay")
                .Time("StartJob")
                .Number("WO#")
                .Number("WOID")
                .Text("VehDesc", 100)
                .Text("Customer", 100)
                .Time("WorkDate")
                .Text("GLType", 10)
                .Done(),
            ClockWish("LDTotals", "ID")
                .Number("EmpID")
                .Time("WorkDate")
                .Time("StartDay")
                .Time("EndDay")
                .Number("TotHrs", Double)
                .Number("JobCount", Integer)
                .Number("JobHrs", Double)
                .Done(),
            ClockWish("LDHistory", "ID")
                .Number("EmpID")
                .Time("WorkDate")
                .Time("JobStart")
                .Time("JobEnd")
                .Number("WONumb")
                .Number("WOID")
                .Text("GLType", 10)
                .Number("Hrs", Double)
                .Text("VehDesc", 100)
                .Text("Customer", 100)
                .Done(),
            ClockWish("Status", "ID")
                .Text("AcctType", 50)
                .Text("GLType", 10)
                .Text("GLDesc", 75)
                .Text("Description", 75)
                .Done()};
}

}  // namespace tools::shop
