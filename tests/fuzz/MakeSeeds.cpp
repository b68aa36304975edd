// SPDX-License-Identifier: Apache-2.0
// make_seeds: writes the inputs that fuzzing starts from, one folder for each target.
//
//   make_seeds FOLDER
#include "jet/format/CodePage.h"
#include "jet/format/PropertyBlock.h"
#include "jet/format/TextCompression.h"
#include "tests/fuzz/SeedFile.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <iostream>

namespace {

using fuzz::SeedFile;
using Bytes = std::vector<std::byte>;

constexpr std::array<std::string_view, 12> kStatements{
    "SELECT * FROM Kinds WHERE LEFT(Name,1) <> '@' ORDER BY Name, Day DESC",
    "SELECT Count(Id) as JobCt, Sum(Hours) as JobHrs FROM Kinds WHERE Id = 7 AND Day > #3/15/2004#",
    "SELECT * FROM [Kinds] WHERE Name In('a', 'b') AND Done = FALSE Or Mark Is Null;",
    "SELECT Name, Max(Hours) FROM Kinds GROUP BY Name HAVING Count(*) > 1",
    "SELECT DISTINCT TOP 3 IIf(Done, Name & 'x', Null) AS y FROM Kinds AS z WHERE z.Hours / 2 < 4",
    "SELECT Mid(Name, 3, 4), InStr(Name, 'o'), Format(Day, 'yyyy-mm-dd'), Int(Hours) FROM Kinds",
    "UPDATE Kinds SET Name = 'it''s', Hours = Hours + 1.5E1 WHERE Id Between 5 And 9",
    "UPDATE Kinds SET Note = Note & Note, Money = Money * 2, Day = Now()",
    "INSERT INTO Kinds (Name, Hours) VALUES ('x', 1.5)",
    "INSERT INTO Kinds SELECT * FROM Kinds WHERE Id = 3",
    "DELETE FROM Kinds WHERE Not (Id Between 1 And 3) Or Name Like '[a-c]*#?'",
    "DELETE * FROM Kinds"};

constexpr std::array<std::string_view, 6> kExpressions{
    "Name = 'Smith' And Hours >= 2", "Day = #1/2/2004 3:04:05 PM#", ">=0 And <24",
    "In ('M', 'F') Or Is Null",      "=Left(\"abc\", 2) & 1",       "Not Name Like 'A*' Xor Done"};

constexpr std::array<std::string_view, 4> kTexts{"Zo\xC3\xAB Br\xC3\xB6nte", "a-b'c co-op", "",
                                                 "\xE2\x82\xAC 12.50 \xE5\xB1\xB1"};

constexpr std::array<std::string_view, 4> kProfiles{
    "FileLoc\nLodrin\nC:\\Shop\n; c\r\n[FileLoc]\r\nLodrin=\"C:\\Data\"\r\nOther = 1\r\n[Next]\r\n",
    "Next\nKey\n7\n\xEF\xBB\xBF[FileLoc]\nLodrin=a\n\n[ next ]\n key =b", "A\nB\nC\n",
    "A\nB\nC\n[A]\r[B]\n=\n[\n]"};

class Folder {
public:
    Folder(const std::filesystem::path& where, const char* target) : where_(where / target)
    {
        std::filesystem::remove_all(where_);
        std::filesystem::create_directories(where_);
    }

    void Add(const Bytes& input)
    {
        const auto path = where_ / ("seed-" + std::to_string(count_++));
        std::ofstream file(path, std::ios::binary);
        for (const std::byte byte : input)
            file.put(static_cast<char>(byte));
    }

    void Add(unsigned what, const Bytes& rest)
    {
        Bytes input{static_cast<std::byte>(what)};
        input.insert(input.end(), rest.begin(), rest.end());
        Add(input);
    }

    void Add(unsigned what, std::string_view text) { Add(what, BytesOf(text)); }

    static Bytes BytesOf(std::string_view text)
    {
        Bytes bytes;
        for (const char c : text)
            bytes.push_back(static_cast<std::byte>(c));
        return bytes;
    }

private:
    std::filesystem::path where_;
    int count_ = 0;
};

Bytes RowInput(const Bytes& definition, const Bytes& row)
{
    Bytes input{static_cast<std::byte>(definition.size()),
                static_cast<std::byte>(definition.size() >> 8U)};
    input.insert(input.end(), definition.begin(), definition.end());
    input.insert(input.end(), row.begin(), row.end());
    return input;
}

Bytes PagesOf(const SeedFile& seed)
{
    Bytes pages;
    const std::size_t size = seed.version->pageSize;
    for (const auto page : seed.byName) {
        const auto at = seed.bytes.begin() + static_cast<std::ptrdiff_t>(Raw(page) * size);
        pages.insert(pages.end(), at, at + static_cast<std::ptrdiff_t>(size));
    }
    return pages;
}

void AddFiles(const std::filesystem::path& where)
{
    Folder open(where, "FuzzOpen"), row(where, "FuzzRow"), index(where, "FuzzIndex");
    for (const unsigned choice : {0U, 1U}) {
        const SeedFile& seed = SeedFile::Of(fuzz::VersionOf(choice));
        open.Add(seed.bytes);
        index.Add(choice, PagesOf(seed));
        for (const std::size_t number : {0U, 1U, 2U, 7U, 60U})
            row.Add(choice, RowInput({}, seed.rows[number]));
        row.Add(choice, RowInput(seed.definition, seed.rows[4]));
    }
}

Bytes Properties(std::uint16_t codePage)
{
    jet::format::PropertyBlock block(codePage);
    block.SetText("", "ValidationRule", "[Hours] < 24");
    block.SetBoolean("Name", "Required", true);
    block.SetMemo("Hours", "DefaultValue", "0");
    return block.Encode();
}

void AddTexts(const std::filesystem::path& where)
{
    Folder folder(where, "FuzzText");
    for (const std::string_view text : kTexts) {
        for (const auto form :
             {jet::format::TextForm::Plain, jet::format::TextForm::CompressedIfShorter})
            folder.Add(0, jet::format::EncodeText(text, form));
        for (const unsigned order : {4U, 5U, 6U, 7U}) {
            const std::string twice = std::string(text) + std::string(text);
            folder.Add(order, jet::format::EncodeText(twice, jet::format::TextForm::Plain));
        }
    }
    folder.Add(1, "Zo\xEB \x80 plain");
    for (const std::uint16_t codePage : {jet::format::kUtf16, jet::format::kWindows1252})
        folder.Add(2, Properties(codePage));
}

void AddStatements(const std::filesystem::path& where)
{
    Folder sql(where, "FuzzSql"), profile(where, "FuzzProfile");
    for (const std::string_view text : kStatements)
        sql.Add(text.starts_with("SELECT") ? 3 : 2, text);
    for (const std::string_view text : kExpressions)
        for (const unsigned what : {0U, 1U})
            sql.Add(what, text);
    for (const std::string_view text : kProfiles)
        profile.Add(Folder::BytesOf(text));
}

}  // namespace

int main(int count, char** words)
{
    if (count != 2) {
        std::cerr << "make_seeds FOLDER\n";
        return 2;
    }
    AddFiles(words[1]);
    AddTexts(words[1]);
    AddStatements(words[1]);
    return 0;
}
