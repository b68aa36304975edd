// SPDX-License-Identifier: Apache-2.0
#include "bench/MdbReader.h"

// First, because the other header would declare its templates as C.
#include <cstdlib>
#include <glib.h>
#include <mdbtools.h>
#include <stdexcept>

namespace bench {

struct MdbReader::Open {
    MdbHandle* file = nullptr;
    MdbTableDef* table = nullptr;
    std::vector<std::vector<char>> places;  // of the bound columns

    Open() = default;
    Open(const Open&) = delete;
    Open& operator=(const Open&) = delete;
    ~Open()
    {
        if (table != nullptr) mdb_free_tabledef(table);
        if (file != nullptr) mdb_close(file);
    }
};

MdbReader::MdbReader(const std::string& path, const std::string& table)
    : open_(std::make_unique<Open>())
{
    open_->file = mdb_open(path.c_str(), MDB_NOFLAGS);
    if (open_->file == nullptr) throw std::runtime_error("libmdb cannot open " + path);
    std::string name = table;
    open_->table = mdb_read_table_by_name(open_->file, name.data(), MDB_TABLE);
    if (open_->table == nullptr) throw std::runtime_error("libmdb finds no table " + table);
    mdb_read_columns(open_->table);
    open_->places.resize(open_->table->num_cols);
}

MdbReader::~MdbReader() = default;

Reading MdbReader::Sum(const std::string& field)
{
    std::string name = field;
    std::vector<char> text(MDB_BIND_SIZE);
    if (mdb_bind_column_by_name(open_->table, name.data(), text.data(), nullptr) < 0)
        throw std::runtime_error("libmdb finds no field " + field);
    mdb_rewind_table(open_->table);
    Reading reading;
    for (; mdb_fetch_row(open_->table) != 0; ++reading.rows)
        reading.AddNumber(std::strtod(text.data(), nullptr));
    return reading;
}

Reading MdbReader::ReadAll(int limit)
{
    int column = 0;
    for (std::vector<char>& place : open_->places) {
        place.resize(MDB_BIND_SIZE);
        mdb_bind_column(open_->table, ++column, place.data(), nullptr);
    }
    mdb_rewind_table(open_->table);
    Reading reading;
    while (reading.rows < limit && mdb_fetch_row(open_->table) != 0)
        ++reading.rows;
    return reading;
}

}  // namespace bench
