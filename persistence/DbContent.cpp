#include "persistence/DbContent.h"

#include <SQLiteCpp/Database.h>

namespace KT {

DbContent::DbContent() = default;
DbContent::~DbContent() = default;

}  // namespace KT
