// A module handle shared by reference count: the module is freed when the last copy goes.
#pragma once

#include "support/windows_api.h"

#include <boost/shared_ptr.hpp>

#include <type_traits>

namespace ovk {

class shared_hmodule : public boost::shared_ptr<std::remove_pointer_t<HMODULE>> {
public:
    using base_type = boost::shared_ptr<std::remove_pointer_t<HMODULE>>;

    shared_hmodule() = default;
    /// Takes ownership of a result of LoadLibraryW. A null handle gives an object that is
    /// empty but valid: it tests false and frees nothing.
    explicit shared_hmodule(HMODULE module) : base_type(module, &shared_hmodule::free_library) {}

    static void free_library(HMODULE module) {
        if (module) FreeLibrary(module);
    }
};

}  // namespace ovk
