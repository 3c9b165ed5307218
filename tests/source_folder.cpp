#include "tests/source_folder.h"

// Defined for this file alone, so that all other objects are the same wherever the tree lies.
std::string SourceFolder() { return ZRKA_SOURCE_FOLDER; }
