// corpus.h -- small files of every kind that the program reads, whole and damaged: where the fuzzers start from.
#pragma once
#include <cstdint>
#include <string>
#include <vector>

struct CorpusFile {
    std::string          folder;  // the fuzz target that takes such files
    std::string          name;
    std::vector<uint8_t> bytes;
};

std::vector<CorpusFile> MakeCorpus();
