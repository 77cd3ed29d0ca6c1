// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <vector>

#include <larynth/Properties.h>

namespace larynth {

/// What a container keeps of an object: the programmatic identifier of its class, and its properties, which
/// are named arrays of numbers.
class StoredProperties {
  public:
    using Arrays = std::map<std::string, std::vector<double>>;

    StoredProperties(std::string progID, Arrays arrays);

    /// What the object announces. Raises ComponentFailure; std::runtime_error for a property that is no
    /// one-dimensional array of doubles.
    static StoredProperties Of(IUnknown* object);

    /// Restores the properties in an object of the same class; an empty array leaves what the object has.
    /// Raises ComponentFailure; std::runtime_error for an object of another class.
    void LoadInto(IUnknown* object) const;

    /// A JSON text: {"class": …, "properties": {name: [numbers], …}}. Raises std::runtime_error for a number
    /// that JSON cannot hold.
    std::string ToText() const;

    /// Reads ToText's text; `fileName` serves messages. Raises BadInput.
    static StoredProperties Parse(const std::string& text, const std::string& fileName);

    const std::string& ProgID() const noexcept { return progID_; }
    const Arrays& Values() const noexcept { return arrays_; }

  private:
    std::string progID_;
    Arrays arrays_;
};

}  // namespace larynth
