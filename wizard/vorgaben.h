#pragma once

#include <QString>

#include <optional>
#include <vector>

/// A test characteristic that is offered ready-made.
struct Vorgabe
{
    QString name;
    QString einheit;
    QString formelzeichen;

    bool operator==(const Vorgabe &) const = default;
};

/// The ready-made characteristics, unique by name, in the order in which they were added.
class Vorgabentabelle
{
public:
    /// Appends \a vorgabe unless there is one of its name.
    void add(const Vorgabe &vorgabe);

    const std::vector<Vorgabe> &entries() const { return m_entries; }

    /// The first entry that agrees with the one text of \a entered that is not empty; nothing where
    /// none, two or three of them are filled. Texts are compared exactly.
    std::optional<Vorgabe> completion(const Vorgabe &entered) const;

private:
    std::vector<Vorgabe> m_entries;
};
