#ifndef VTRUTILS_BENCH_PEERS_LIBCSVTABLE_H
#define VTRUTILS_BENCH_PEERS_LIBCSVTABLE_H

#include "bench/support/MeasuringFolder.h"
#include "common/Handles.h"

#include <csv.h>
#include <string>
#include <vector>

namespace bench {

using TableRows = std::vector<std::vector<std::string>>;

/// libcsv, which hands out one field after the other, filling rows of strings.
class LibcsvTable {
public:
    static constexpr const char* name = "libcsv into strings";

    bool Load(const char* path) {
        const std::string bytes = ReadWhole(path);
        csv_parser parser;
        if (csv_init(&parser, 0) != 0)
            return false;
        const bool parsed =
            csv_parse(&parser, bytes.data(), bytes.size(), EndField, EndRow, this) == bytes.size();
        csv_fini(&parser, EndField, EndRow, this);
        csv_free(&parser);
        return parsed;
    }

    bool Save(const char* path) const {
        const vtr::StreamHandle stream(std::fopen(path, "wb"));
        for (const std::vector<std::string>& row : rows) {
            for (std::size_t i = 0; i < row.size(); ++i) {
                if (i > 0)
                    std::fputc(',', stream.Get());
                if (!row[i].empty())
                    csv_fwrite(stream.Get(), row[i].data(), row[i].size());
            }
            std::fputs("\r\n", stream.Get());
        }
        return std::ferror(stream.Get()) == 0;
    }

    TableRows rows;

private:
    static void EndField(void* bytes, std::size_t size, void* self) {
        static_cast<LibcsvTable*>(self)->current.emplace_back(static_cast<const char*>(bytes),
                                                              size);
    }

    static void EndRow(int /*end*/, void* self) {
        LibcsvTable* table = static_cast<LibcsvTable*>(self);
        table->rows.push_back(std::move(table->current));
        table->current.clear();
        table->current.reserve(table->rows.front().size());
    }

    std::vector<std::string> current;
};

} // namespace bench

#endif
