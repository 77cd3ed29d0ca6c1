// SPDX-License-Identifier: MIT
/// The property protocol: how a container stores an object's named arrays of numbers and restores them in
/// another object of the same class.
///
/// To store: DescribeProperties announces every property to the container's sink, with an index object that
/// knows the array's dimensions; the container moves the index and fetches element by element with
/// GetPropertyValue, as long as the announcement lasts. To restore: LoadProperties calls the container's
/// source, which pushes element by element with SetPropertyValue, beginning with element 0.
///
/// Parameters named Reserved carry nothing here and are not read. Element types are numbers; 6 is a double.
#pragma once

#include <larynth/Interface.h>

namespace larynth {
/// The type code of a double.
inline constexpr LONG kPropertyTypeDouble = 6;
}  // namespace larynth

/// Which element of an array is meant, and how large the array is: a list of dimensions, each with a size, a
/// current index and a name (" , " until set). E_FAIL for a dimension that does not exist.
struct LARYNTH_INTERFACE(IACLPropertyIndex, "1e527ff9-160e-47a4-89f1-c7e23916e1df") : IUnknown {
    /// Drops surplus dimensions; new ones have size 0 and index 0. E_FAIL for a negative or immense count.
    virtual HRESULT LARYNTH_CALL SetDimensionCount(int nCount /*in*/) = 0;
    /// 0 in a new index.
    virtual HRESULT LARYNTH_CALL GetDimensionCount(int* pnCount /*out*/) = 0;
    /// Elements along a dimension.
    virtual HRESULT LARYNTH_CALL SetSize(int nDimension /*in*/, int nSize /*in*/) = 0;
    /// Which element along a dimension is meant, from 0.
    virtual HRESULT LARYNTH_CALL SetIndex(int nDimension /*in*/, int nIndex /*in*/) = 0;
    virtual HRESULT LARYNTH_CALL SetName(int nDimension /*in*/, LPCSTR sName /*in*/) = 0;  ///< Copied.
    /// Elements along a dimension.
    virtual HRESULT LARYNTH_CALL GetSize(int nDimension /*in*/, int* pnSize /*out*/) = 0;
    /// Which element along a dimension is meant, from 0.
    virtual HRESULT LARYNTH_CALL GetIndex(int nDimension /*in*/, int* pnIndex /*out*/) = 0;
    /// Characters, without the terminating zero.
    virtual HRESULT LARYNTH_CALL GetNameLength(int nDimension /*in*/, int* pnLength /*out*/) = 0;
    /// Copies the name with its terminating zero: `sBuffer` takes length + 1 characters.
    virtual HRESULT LARYNTH_CALL GetName(int nDimension /*in*/, LPSTR sBuffer /*out*/) = 0;
};

struct IACLPersistProperties;

/// Takes the announcements of DescribeProperties.
struct LARYNTH_INTERFACE(IACLPropertySink, "c51ae08b-3727-4581-be57-821b6396e022") : IUnknown {
    /// One property of `pOwner`: its name, no value, its elements' type code, and an index object, which
    /// answers IACLPropertyIndex and lives no longer than the call.
    virtual HRESULT LARYNTH_CALL AddProperty(IACLPersistProperties* pOwner /*in*/, LPCSTR sName /*in*/,
                                             const void* pValue /*in*/, LONG nType /*in*/,
                                             LONG nReserved5 /*in*/, LONG nReserved6 /*in*/,
                                             LONG nReserved7 /*in*/, IUnknown* pIndex /*in*/) = 0;
};

/// Has stored values to give.
struct LARYNTH_INTERFACE(IACLPropertySource, "f0cbb970-378b-470c-b642-8c7a968a89b8") : IUnknown {
    /// Pushes every stored element into `pTarget` with SetPropertyValue, in index order.
    virtual HRESULT LARYNTH_CALL PushProperties(IACLPersistProperties* pTarget /*in*/) = 0;
};

/// Takes one value.
struct LARYNTH_INTERFACE(IACLValueHolder, "a71cb470-5920-4c65-b7ef-2db5b2ecaa17") : IUnknown {
    virtual HRESULT LARYNTH_CALL Reserved3() = 0;  ///< Not called by this system.
    /// The value of type `nType` at `pValue`; to be copied.
    virtual HRESULT LARYNTH_CALL SetValue(const void* pValue /*in*/, LONG nType /*in*/) = 0;
};

/// An object whose properties a container can store and restore.
///
/// Names end with a zero and are compared byte for byte. Names and values are not probed: what is not null
/// has to be readable, the value as the double that it is. An index object is anything that answers
/// IACLPropertyIndex; a null one gives E_FAIL, a failing one its code.
struct LARYNTH_INTERFACE(IACLPersistProperties, "13d38b63-47e3-4c09-b70c-349f6dcb6633") : IUnknown {
    /// Announces every property; the sink's results are not examined. E_POINTER.
    virtual HRESULT LARYNTH_CALL DescribeProperties(IACLPropertySink* pSink /*in*/) = 0;
    /// Lets the source push its values, then puts them to use; the source's result. E_POINTER. E_FAIL when
    /// the values cannot be put to use.
    virtual HRESULT LARYNTH_CALL LoadProperties(IACLPropertySource* pSource /*in*/) = 0;
    /// One element. Index 0 fixes the array's size. An unknown name is ignored: S_OK. E_FAIL for a null name
    /// or value, and, with nothing changed, for an index outside the array or an immense size.
    virtual HRESULT LARYNTH_CALL SetPropertyValue(IUnknown* pReserved1 /*in*/, LPCSTR sName /*in*/,
                                                  LONG nReserved3 /*in*/, const void* pValue /*in*/,
                                                  LONG nType /*in*/, LONG nReserved6 /*in*/,
                                                  LONG nReserved7 /*in*/, IUnknown* pIndex /*in*/) = 0;
    /// Hands one element to the holder, whose result is not examined. An unknown name gives nothing: S_OK.
    /// E_FAIL for a null name or holder and for an index outside the array.
    virtual HRESULT LARYNTH_CALL GetPropertyValue(IACLValueHolder* pHolder /*in*/, LPCSTR sName /*in*/,
                                                  LONG nReserved3 /*in*/, IUnknown* pIndex /*in*/) = 0;
    virtual HRESULT LARYNTH_CALL GetClassID(CLSID* pClassID /*out*/) = 0;  ///< To re-create the object.
    /// The version-independent programmatic identifier; constant, not to be freed.
    virtual HRESULT LARYNTH_CALL GetProgID(LPCSTR* psProgID /*out*/) = 0;
};
