// The databases of Studies, whose failures are in the user's language.
#pragma once

#include "database/Database.h"

#include <string>

namespace studies {

using corvane::database::Statement;
using corvane::database::Transaction;

class Database final : public corvane::database::Database {
public:
    explicit Database(std::string path);
};

} // namespace studies
