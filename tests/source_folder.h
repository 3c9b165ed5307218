// source_folder.h -- where the tests find files of the source tree.
#pragma once
#include <string>

std::string SourceFolder();
