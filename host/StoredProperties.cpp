// SPDX-License-Identifier: MIT
#include "host/StoredProperties.h"

#include <cmath>
#include <cstring>
#include <exception>
#include <limits>
#include <optional>
#include <stdexcept>
#include <utility>

#include <larynth/ComPtr.h>

#include "host/ElementIndex.h"
#include "host/Errors.h"
#include "host/Json.h"

namespace larynth {
namespace {

class NumberHolder final : public ClientObject<IACLValueHolder> {
  public:
    HRESULT LARYNTH_CALL Reserved3() noexcept override { return E_NOTIMPL; }
    HRESULT LARYNTH_CALL SetValue(const void* pValue, LONG nType) noexcept override {
        if (pValue == nullptr) return E_POINTER;
        if (nType != kPropertyTypeDouble) return E_FAIL;
        double number = 0.0;
        std::memcpy(&number, pValue, sizeof number);
        number_ = number;
        return S_OK;
    }

    /// The value since the last call.
    std::optional<double> Take() noexcept { return std::exchange(number_, std::nullopt); }

  private:
    std::optional<double> number_;
};

/// Fetches every announced array while its announcement lasts.
class ArrayCollector final : public ClientObject<IACLPropertySink> {
  public:
    explicit ArrayCollector(StoredProperties::Arrays& arrays) : arrays_(arrays) {}

    HRESULT LARYNTH_CALL AddProperty(IACLPersistProperties* pOwner, LPCSTR sName, const void* /*pValue*/,
                                     LONG nType, LONG, LONG, LONG, IUnknown* pIndex) noexcept override try {
        Collect(*pOwner, sName, nType, pIndex);
        return S_OK;
    } catch (...) {
        failure_ = std::current_exception();  // the announcing object does not examine the result
        return E_FAIL;
    }

    void RaiseFailure() const {
        if (failure_) std::rethrow_exception(failure_);
    }

  private:
    void Collect(IACLPersistProperties& owner, LPCSTR name, LONG type, IUnknown* indexObject) {
        ComPtr<IACLPropertyIndex> index;
        index.Query(indexObject);
        int dimensions = 0, size = 0;
        Require(index->GetDimensionCount(&dimensions), "read a property's dimensions");
        if (type != kPropertyTypeDouble || dimensions != 1) {
            throw std::runtime_error(std::string("cannot store the property ") + name +
                                     ": expected one dimension of doubles");
        }
        Require(index->GetSize(0, &size), "read a property's size");
        std::vector<double>& array = arrays_[name];
        for (int i = 0; i < size; ++i) array.push_back(Fetch(owner, name, *index.Get(), i));
    }

    static double Fetch(IACLPersistProperties& owner, LPCSTR name, IACLPropertyIndex& index, int i) {
        const auto holder = ComPtr<IACLValueHolder>::Adopt(new NumberHolder);
        Require(index.SetIndex(0, i), "move to a property's element");
        Require(owner.GetPropertyValue(holder.Get(), name, 0, &index), "read a property's element");
        const std::optional<double> number = static_cast<NumberHolder*>(holder.Get())->Take();
        if (!number) throw std::runtime_error(std::string("no value came for the property ") + name);
        return *number;
    }

    StoredProperties::Arrays& arrays_;
    std::exception_ptr failure_;
};

/// Pushes stored arrays.
class ArraySource final : public ClientObject<IACLPropertySource> {
  public:
    explicit ArraySource(const StoredProperties::Arrays& arrays) : arrays_(arrays) {}

    HRESULT LARYNTH_CALL PushProperties(IACLPersistProperties* pTarget) noexcept override try {
        for (const auto& [name, array] : arrays_) {
            if (const HRESULT hr = Push(*pTarget, name.c_str(), array); FAILED(hr)) return hr;
        }
        return S_OK;
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }

  private:
    static HRESULT Push(IACLPersistProperties& target, LPCSTR name, const std::vector<double>& array) {
        if (array.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) return E_FAIL;
        const int size = static_cast<int>(array.size());
        const auto index = ComPtr<IACLPropertyIndex>::Adopt(new ElementIndex(size));
        for (int i = 0; i < size; ++i) {
            index->SetIndex(0, i);
            const double& value = array[static_cast<std::size_t>(i)];
            const HRESULT hr =
                target.SetPropertyValue(&target, name, 0, &value, kPropertyTypeDouble, 0, 0, index.Get());
            if (FAILED(hr)) return hr;
        }
        return S_OK;
    }

    const StoredProperties::Arrays& arrays_;
};

ComPtr<IACLPersistProperties> PropertiesOf(IUnknown* object) {
    ComPtr<IACLPersistProperties> properties;
    Require(properties.QueryFrom(object), "reach an object's properties");
    return properties;
}

std::string ProgIDOf(IACLPersistProperties& properties) {
    LPCSTR progID = nullptr;
    Require(properties.GetProgID(&progID), "read an object's programmatic identifier");
    return progID;
}

}  // namespace

StoredProperties::StoredProperties(std::string progID, Arrays arrays)
    : progID_(std::move(progID)), arrays_(std::move(arrays)) {}

StoredProperties StoredProperties::Of(IUnknown* object) {
    const ComPtr<IACLPersistProperties> properties = PropertiesOf(object);
    StoredProperties stored(ProgIDOf(*properties.Get()), {});
    auto* const collector = new ArrayCollector(stored.arrays_);
    const auto sink = ComPtr<IACLPropertySink>::Adopt(collector);
    Require(properties->DescribeProperties(sink.Get()), "read an object's properties");
    collector->RaiseFailure();
    return stored;
}

void StoredProperties::LoadInto(IUnknown* object) const {
    const ComPtr<IACLPersistProperties> properties = PropertiesOf(object);
    const std::string target = ProgIDOf(*properties.Get());
    if (target != progID_) {
        throw std::runtime_error("cannot load properties of " + progID_ + " into an object of " + target);
    }
    const auto source = ComPtr<IACLPropertySource>::Adopt(new ArraySource(arrays_));
    Require(properties->LoadProperties(source.Get()), "load an object's properties");
}

std::string StoredProperties::ToText() const {
    nlohmann::json properties = nlohmann::json::object();
    for (const auto& [name, array] : arrays_) {
        for (const double value : array) {
            if (!std::isfinite(value)) {
                throw std::runtime_error("cannot store the property " + name + ": it is not finite");
            }
        }
        properties[name] = array;
    }
    return nlohmann::json{{"class", progID_}, {"properties", properties}}.dump(1) + '\n';
}

StoredProperties StoredProperties::Parse(const std::string& text, const std::string& fileName) {
    const JsonValue file = JsonValue::Parse(text, fileName);
    file.ExpectObject({"class", "properties"});
    const JsonValue properties = file["properties"];
    Arrays arrays;
    for (const std::string& name : properties.Keys()) arrays[name] = properties[name].Numbers();
    return {file["class"].Text(), std::move(arrays)};
}

}  // namespace larynth
