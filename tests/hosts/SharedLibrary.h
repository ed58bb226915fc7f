#pragma once

#include <dlfcn.h>

#include <stdexcept>
#include <string>

/** A library that is loaded as long as this lives. One that cannot be loaded throws std::runtime_error. */
class SharedLibrary
{
public:
    explicit SharedLibrary (const std::string& path) : library (dlopen (path.c_str(), RTLD_NOW | RTLD_LOCAL))
    {
        if (library == nullptr)
            throw std::runtime_error (dlerror());
    }

    ~SharedLibrary() { dlclose (library); }
    SharedLibrary (const SharedLibrary&) = delete;
    SharedLibrary& operator= (const SharedLibrary&) = delete;

    /** Whether this process holds the library of this path. */
    [[nodiscard]] static bool isLoaded (const std::string& path)
    {
        auto* found = dlopen (path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NOLOAD);

        if (found != nullptr)
            dlclose (found);

        return found != nullptr;
    }

    [[nodiscard]] void* handle() const noexcept { return library; }

    /** A function of this type; a name that the library does not offer throws std::runtime_error. */
    template <typename Function>
    [[nodiscard]] Function function (const char* name) const
    {
        if (auto* found = dlsym (library, name))
            return reinterpret_cast<Function> (found);

        throw std::runtime_error (std::string ("no ") + name);
    }

private:
    void* library;
};
