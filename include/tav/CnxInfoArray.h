#pragma once

#include <tav/CnxInfo.h>
#include <tav/ListIterator.h>

#include <memory>

namespace TAV_marlo_v1 {

/// An ordered array of connections.
class TAV_API CnxInfoArray {
public:
    CnxInfoArray();
    CnxInfoArray(CnxInfoArray const& other);
    CnxInfoArray(CnxInfoArray&& other) noexcept;
    ~CnxInfoArray();
    CnxInfoArray& operator=(CnxInfoArray const& other);
    CnxInfoArray& operator=(CnxInfoArray&& other) noexcept;

    unsigned size() const noexcept;
    bool empty() const noexcept { return size() == 0; }
    /// A connection without ports past the end.
    CnxInfo operator[](unsigned index) const;
    void add(CnxInfo const& connection);
    void clear();

    ListIterator<CnxInfoArray> begin() const { return {*this, 0}; }
    ListIterator<CnxInfoArray> end() const { return {*this, size()}; }

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl; // null while empty
};

} // namespace TAV_marlo_v1
