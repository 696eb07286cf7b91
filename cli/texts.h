#pragma once

// Numbers, instants and tables as the terminal shows them, the same under every locale.

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace glintara::cli {

/// `value` cut (floor) to `decimals` places, all of them shown.
std::string FixedText(double value, int decimals);

/// `value` with all digits that it takes to read it back unchanged.
std::string FullText(double value);

/// An instant in UTC to a tenth of a second: "2018-01-20 05:12:33.4".
std::string ShortInstant(double jd);

/// An instant in UTC to a millisecond: "2018-01-20T05:12:33.412Z".
std::string IsoInstant(double jd);

/// A field of a comma-separated table, in quotes when it needs them.
std::string CsvField(std::string_view text);

/// Fields of one line, joined by commas.
std::string CsvLine(const std::vector<std::string>& fields);

/// A table with aligned columns. Headings may have several lines.
class Table {
  public:
    enum class Align { Left, Right };

    void AddColumn(std::vector<std::string> heading, Align align);
    void AddRow(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }
    void Print(std::ostream& out) const;

  private:
    struct Column {
        std::vector<std::string> heading;
        Align align;
    };

    std::vector<Column> columns_;
    std::vector<std::vector<std::string>> rows_;
};

}  // namespace glintara::cli
