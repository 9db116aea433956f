// Why an import fails as a whole, in words (facility 0x106).
#pragma once

#include <cstdint>

#include "resources/messagerow.h"

namespace connectdialog {

enum ImportFault : std::uint32_t {
    kImportUnreadable = 0xE1060001,  ///< The file, the cause.
    kImportFolderName = 0xE1060002,  ///< The path, what is wrong with a name in it.
    kImportNoFolder = 0xE1060003,    ///< The path.
    kImportRefused = 0xE1060004,
};

inline constexpr MessageRow kImportMessages[] = {
    {kImportUnreadable, u"\"%1\" cannot be imported: %2."},
    {kImportFolderName, u"There can be no folder \"%1\". %2"},
    {kImportNoFolder, u"\"%1\" is a session and not a folder."},
    {kImportRefused, u"The store does not take the sessions. It is as it was before."},
};

}  // namespace connectdialog
