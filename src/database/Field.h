#pragma once

#include <QString>

#include <cstdint>

namespace Stemhaven {

/// How the projects table shows a column's values.
enum class Format : std::uint32_t {
    Text = 0,
    DateTime = 1,
    Boolean = 2,
    Progress = 3,
    StarRating = 4,
    Date = 5
};

/// A column that the projects table can show.
struct Field {
    QString name;
    QString displayName;
    Format format = Format::Text;
    std::int32_t visible = 1;
    std::int32_t searchable = 0;
    std::uint32_t order = 0;
    QString expression{}; ///< gives the values where no column has the field's name
};

} // namespace Stemhaven
