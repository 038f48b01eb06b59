#pragma once

#include "Csv.h"

namespace studies {

inline Table Penguins() {
    return ReadCsvFile(STUDIES_DATA "/penguins.csv").table;
}

} // namespace studies
