#pragma once

#include <QObject>

#include <functional>
#include <map>
#include <memory>
#include <string>

/// The test classes of one executable. Few executables with many classes build and link much
/// faster.
namespace testregistry {

using Factory = std::function<std::unique_ptr<QObject>()>;

inline std::map<std::string, Factory> &classes()
{
    static std::map<std::string, Factory> all;
    return all;
}

struct Entry
{
    Entry(const char *name, Factory factory) { classes().emplace(name, std::move(factory)); }
};

} // namespace testregistry

/// Enters a test class; stands once below it, outside of every namespace.
#define REGISTER_TEST(Class)                                                                       \
    static const testregistry::Entry registered##Class(                                            \
        #Class, [] { return std::unique_ptr<QObject>(std::make_unique<Class>()); });
