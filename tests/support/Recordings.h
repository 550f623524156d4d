#pragma once

#include "support/Bytes.h"
#include "support/RecordedFolder.h"

#include <string>
#include <vector>

/// One line of the folder's index.
struct Recording {
    std::string file; ///< its place in the folder
    QUOR_U8 tableId;
    std::size_t sections;
    std::size_t bytes;
};

/// The files of the index, in its order.
std::vector<Recording> recordings();

/// Takes bytes apart that hold sections one behind the other.
/// @throw std::runtime_error when the last section is cut off.
std::vector<ByteVector> splitSections(const ByteVector& bytes);

/// The sections of one file. @throw std::runtime_error when it cannot be read.
std::vector<ByteVector> recordedSections(const std::string& file);

/// One section of a file with the place where it was found.
struct RecordedSection {
    std::string place;
    ByteVector bytes;
};

/// All sections of a table_id.
std::vector<RecordedSection> recordedSections(QUOR_U8 tableId);

/// The lines of a text file of the folder.
Lines recordedLines(const std::string& file);
