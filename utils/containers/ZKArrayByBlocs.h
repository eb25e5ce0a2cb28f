// ZKArrayByBlocs.h: a list of blocs of elements held in two arrays.
//
// m_starts holds the position of each bloc's first element in m_elements plus
// a final end marker (the element count), so bloc b is the elements
// m_starts[b] ... m_starts[b + 1] - 1. The fields are public: owners fill them
// directly or through addBloc.
//
// Threads: a value; not locked.
#pragma once

#include "ZKArray.h"

template <typename T> class ZKArrayByBlocs {
public:
    ZKArray<int> m_starts;
    ZKArray<T> m_elements;

    // The number of blocs: one less than the starts (0 without starts).
    int getNbBlocs() const { return m_starts.empty() ? 0 : int(m_starts.size() - 1); }

    // True when b names a bloc whose bounds lie inside m_elements.
    bool isValidBloc(int b) const {
        return b >= 0 && b < getNbBlocs() && m_starts[b] >= 0 && m_starts[b] <= m_starts[b + 1] &&
               m_starts[b + 1] <= m_elements.size();
    }
    // Element count and first element of a valid bloc.
    int getBlocSize(int b) const { return m_starts[b + 1] - m_starts[b]; }
    const T* getBloc(int b) const { return m_elements.data() + m_starts[b]; }

    // Appends a bloc of count elements.
    void addBloc(const T* values, int count) {
        if (m_starts.empty())
            m_starts.push_back(int(m_elements.size()));
        for (int k = 0; k < count; ++k)
            m_elements.push_back(values[k]);
        m_starts.push_back(int(m_elements.size()));
    }
    void addBloc(const ZKStaticArray<T>& values) { addBloc(values.data(), int(values.size())); }

    void clear() {
        m_starts.clear();
        m_elements.clear();
    }
};
