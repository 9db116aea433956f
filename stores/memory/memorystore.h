// The provider `memory:`: a tree that lives as long as its factory.
//
// It is the plainest provider there is, and the one that others are compared with.
#pragma once

#include <memory>

#include "profile/iprofilestore.h"

namespace connectdialog::stores {

/// A factory with a new, empty store. Never null.
std::unique_ptr<VProfileStoreFactory> MakeMemoryStoreFactory();

}  // namespace connectdialog::stores
