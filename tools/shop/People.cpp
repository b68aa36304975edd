// SPDX-License-Identifier: Apache-2.0
#include "tools/shop/People.h"

#include "tools/shop/Words.h"

#include <algorithm>

namespace tools::shop {

namespace {

std::string Digits(Dice& dice, int count)
{
    std::string text;
    for (int i = 0; i < count; ++i)
        text += static_cast<char>('0' + dice.Between(0, 9));
    return text;
}

// Letters and digits as identification numbers have them: no I, O or Q.
std::string Code(Dice& dice, int count)
{
    constexpr std::string_view letters = "ABCDEFGHJKLMNPRSTUVWXYZ0123456789";
    std::string text;
    for (int i = 0; i < count; ++i)
        text += letters[static_cast<std::size_t>(dice.Between(0, 32))];
    return text;
}

std::string Phone(Dice& dice)
{
    const std::string area = std::to_string(dice.Between(201, 989));
    return "(" + area + ") 555-" + Digits(dice, 4);
}

base::Value Maybe(Dice& dice, int percent, const std::string& text)
{
    return dice.Percent(percent) ? base::Value(text) : base::Value();
}

// Some moment of the day, `days` days ago.
base::Date Ago(Dice& dice, base::Date today, int days)
{
    return {today.days - days + dice.Between(7 * 3600, 17 * 3600) / 86400.0};
}

struct Address {
    std::string street, city, state, zip;
};

Address AddressOf(Dice& dice)
{
    const City& city = dice.PickOf(std::span<const City>(kCities));
    const std::string house = std::to_string(dice.Between(1, 9899));
    return {house + " " + std::string(dice.Pick(kStreets)), std::string(city.name),
            std::string(city.state), std::string(city.zip) + Digits(dice, 2)};
}

base::Guid KeyOf(Dice& dice)
{
    base::Guid key;
    for (std::uint8_t& b : key.bytes)
        b = static_cast<std::uint8_t>(dice.Between(0, 255));
    return key;
}

// What every profile has, whatever its kind.
RowValues ProfileRow(Dice& dice, base::Date today, std::string_view type, const Address& address)
{
    RowValues row{{"Type", type},
                  {"Address1", address.street},
                  {"Address2", Maybe(dice, 15, "Unit " + std::to_string(dice.Between(1, 48)))},
                  {"City", address.city},
                  {"State", address.state},
                  {"Zip", address.zip},
                  {"HomePhone", Maybe(dice, 85, Phone(dice))},
                  {"WorkPhone", Maybe(dice, 40, Phone(dice))},
                  {"CellPhone", Maybe(dice, 60, Phone(dice))},
                  {"Active", dice.Percent(95)},
                  {"Taxable", true},
                  {"PriceLevel", dice.Between(1, 3)},
                  {"DateCreated", Ago(dice, today, dice.Between(30, 2500))},
                  {"SyncKey", KeyOf(dice)}};
    if (dice.Percent(12)) row.emplace_back("Notes", dice.Pick(kRemarks));
    return row;
}

void AddEmployee(ShopFile& file, Dice& dice, base::Date today, Employee employee, People& people)
{
    const auto place = people.employees.size();
    const bool hidden = employee.lastName.front() == '@';
    RowValues row = ProfileRow(dice, today, hidden ? "Office" : "Employee", AddressOf(dice));
    row.insert(row.end(), {{"LastName", employee.lastName},
                           {"FirstName", employee.firstName},
                           {"EmpRate", Cents(employee.rate)},
                           {"OvertimeRate", Cents(employee.rate * 3 / 2)},
                           {"HireDate", base::Date{today.days - dice.Between(60, 6000)}},
                           {"BirthDate", base::Date{today.days - dice.Between(7000, 22000)}},
                           {"DefaultDept", 10 * dice.Between(1, 10)},
                           {"Efficiency", dice.Between(80, 135) / 100.0}});
    if (place == 0)
        employee.pin = "1234";
    else if (place > 2 && dice.Percent(60))
        employee.pin = Digits(dice, 4);
    if (place == 2)
        row.emplace_back("PIN", "  ");
    else if (!employee.pin.empty())
        row.emplace_back("PIN", employee.pin);
    file.Add("Profile", row);
    employee.number = file.LastCounter("Profile");
    (hidden ? people.hidden : people.employees).push_back(std::move(employee));
}

Employee SomeEmployee(Dice& dice, std::vector<Employee>& known)
{
    for (int tries = 0;; ++tries) {
        Employee employee{.number = 0,
                          .lastName = std::string(dice.Pick(kLastNames)),
                          .firstName = std::string(dice.Pick(kFirstNames)),
                          .rate = dice.Between(1650, 3475),
                          .pin = {}};
        const auto same = [&](const Employee& other) {
            return other.BoardName() == employee.BoardName();
        };
        // Two people may share a name; it is rare.
        if (tries > 20 || std::none_of(known.begin(), known.end(), same)) return employee;
    }
}

void AddCustomer(ShopFile& file, Dice& dice, base::Date today, People& people)
{
    const Address address = AddressOf(dice);
    RowValues row = ProfileRow(dice, today, "Customer", address);
    Customer customer;
    if (dice.Percent(8)) {
        customer.name = dice.Pick(kCompanies);
        row.emplace_back("Company", customer.name);
    } else {
        const auto last = dice.Pick(kLastNames), first = dice.Pick(kFirstNames);
        customer.name = std::string(last) + ", " + std::string(first);
        row.emplace_back("LastName", last);
        row.emplace_back("FirstName", first);
        row.emplace_back("MiddleInitial", Maybe(dice, 30, Code(dice, 1)));
    }
    row.emplace_back("Source", Maybe(dice, 50, std::string(dice.Pick(kSources))));
    row.emplace_back("Email", dice.Percent(25)
                                  ? base::Value("customer" + Digits(dice, 5) + "@mail.example")
                                  : base::Value(""));
    customer.street = address.street;
    customer.town = address.city + ", " + address.state + " " + address.zip;
    file.Add("Profile", row);
    customer.number = file.LastCounter("Profile");
    people.customers.push_back(std::move(customer));
}

void AddVendor(ShopFile& file, Dice& dice, base::Date today, std::string_view company,
               std::string_view type, People& people)
{
    RowValues row = ProfileRow(dice, today, type, AddressOf(dice));
    row.emplace_back("Company", company);
    row.emplace_back("TaxID", Digits(dice, 9));
    row.emplace_back("CreditLimit", Cents(100000 * dice.Between(5, 50)));
    file.Add("Profile", row);
    if (type == "Vendor") people.vendors.push_back(file.LastCounter("Profile"));
}

void AddVehicle(ShopFile& file, Dice& dice, base::Date today, People& people)
{
    const Vehicle& model = dice.PickOf(std::span<const Vehicle>(kVehicles));
    const int thisYear = 1900 + static_cast<int>(today.days / 365.25);
    const int year = thisYear - dice.Between(0, 17);
    OwnedVehicle vehicle;
    vehicle.owner =
        static_cast<std::size_t>(dice.Between(0, static_cast<int>(people.customers.size()) - 1));
    vehicle.description = std::to_string(year) + " " + std::string(model.make) + " " +
                          std::string(model.model) + " " + std::string(model.body);
    vehicle.color = dice.Pick(kColors);
    vehicle.paintCode = Code(dice, 3);
    vehicle.mileage = dice.Between(4, 148000);
    vehicle.license = Code(dice, 3);
    vehicle.license += " " + Digits(dice, 3);
    const std::string engine = std::to_string(dice.Between(10, 68) / 10.0).substr(0, 3) + "L";
    const std::string gears = dice.Percent(75) ? "Automatic" : "Manual";
    vehicle.detail = vehicle.color + " - " + gears + " - " + engine;
    // Old vehicles and trailers come without a number.
    if (dice.Percent(94)) vehicle.vin = Code(dice, 17);
    file.Add("ServiceItem",
             {{"ProfileNumber", people.customers[vehicle.owner].number},
              {"ModelYear", year},
              {"Make", model.make},
              {"Model", model.model},
              {"Body", model.body},
              {"Engine", engine},
              {"Transmission", gears},
              {"Color", vehicle.color},
              {"PaintCode", vehicle.paintCode},
              {"VIN", vehicle.vin.empty() ? base::Value() : base::Value(vehicle.vin)},
              {"License", vehicle.license},
              {"LicenseState", dice.PickOf(std::span<const City>(kCities)).state},
              {"Mileage", vehicle.mileage},
              {"FourWheelDrive", model.model.find("4X4") != std::string_view::npos},
              {"Leased", dice.Percent(12)},
              {"LastService", Ago(dice, today, dice.Between(1, 900))}});
    vehicle.number = file.LastCounter("ServiceItem");
    people.vehicles.push_back(std::move(vehicle));
}

void AddDeletedProfile(ShopFile& file, Dice& dice, base::Date today)
{
    RowValues row = ProfileRow(dice, today, "Customer", AddressOf(dice));
    row.emplace_back("LastName", "Entered twice");
    file.Delete("Profile", file.Add("Profile", row));
}

}  // namespace

People MakePeople(ShopFile& file, Dice dice, base::Date today, int employees, int orders)
{
    People people;
    const int customers = std::max(12, orders * 3 / 4);
    // People are entered as they come: the technicians' numbers lie among the customers'.
    for (int i = 0; i < customers; ++i) {
        AddCustomer(file, dice, today, people);
        if (i % 3 == 0 && static_cast<int>(people.employees.size()) < employees)
            AddEmployee(file, dice, today, SomeEmployee(dice, people.employees), people);
        if (i % 40 == 7) AddDeletedProfile(file, dice, today);
    }
    while (static_cast<int>(people.employees.size()) < employees)
        AddEmployee(file, dice, today, SomeEmployee(dice, people.employees), people);
    AddEmployee(file, dice, today,
                {.number = 0, .lastName = "@Office", .firstName = "Front", .rate = 2000, .pin = {}},
                people);
    for (const std::string_view company : kInsurers)
        AddVendor(file, dice, today, company, "Insurance", people);
    for (const char* company : {"Alder Falls Auto Parts", "Kettle Paint & Supply", "Recyclers' Row",
                                "Webb Dealer Parts", "Zenith Glass"})
        AddVendor(file, dice, today, company, "Vendor", people);
    for (int i = 0; i < std::max(10, orders * 9 / 10); ++i)
        AddVehicle(file, dice, today, people);
    return people;
}

}  // namespace tools::shop
