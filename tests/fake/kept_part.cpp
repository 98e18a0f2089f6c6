// SPDX-License-Identifier: GPL-3.0-or-later
#include "fake/kept_part.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

namespace corvane {

void expectKeptPart(const std::string& path, const std::string& begin, const std::string& end,
                    const std::string& text) {
    const std::string file = std::string(CORVANE_SOURCE_DIR) + "/" + path;
    std::ifstream in(file, std::ios::binary);
    std::string whole{std::istreambuf_iterator<char>(in), {}};
    const std::size_t mark = whole.find(begin);
    ASSERT_NE(mark, std::string::npos) << path << " has no " << begin;
    const std::size_t from = mark + begin.size();
    const std::size_t to = whole.find(end, from);
    ASSERT_NE(to, std::string::npos) << path << " has no " << end;
    if (std::getenv("CORVANE_ACCEPT") != nullptr) {
        std::ofstream(file, std::ios::binary) << whole.replace(from, to - from, text);
        return;
    }
    EXPECT_EQ(whole.substr(from, to - from), text) << path << ": CORVANE_ACCEPT=1 writes it anew";
}

std::string manualRows(const std::vector<std::vector<std::string>>& rows) {
    std::string text = "\n";
    bool shaded = false;
    for (const auto& row : rows) {
        text += shaded ? "<tr bgcolor=\"#f6f8fa\">" : "<tr>";
        for (const std::string& cell : row) text += "<td>" + cell + "</td>";
        text += "</tr>\n";
        shaded = !shaded;
    }
    return text;
}

void expectManualRows(const std::string& name, const std::string& rows) {
    expectKeptPart("docs/manual/index.html", "<!-- " + name + " -->", "<!-- end of " + name + " -->", rows);
}

}  // namespace corvane
