#pragma once

/// Selects the calls of a port that fail, counted from the call that sets it.
class Failing {
public:
    static Failing Never() { return Failing(0, 0); }
    static Failing Always() { return Failing(1, kForEver); }
    /// Only the n-th call. The first is 1.
    static Failing Nth(int n) { return Failing(n, n); }
    /// The n-th call and all later ones.
    static Failing From(int n) { return Failing(n, kForEver); }

    /// Counts one call and returns whether it fails.
    bool Next() {
        ++m_nCalls;
        return m_nCalls >= m_nFirst && (m_nLast == kForEver || m_nCalls <= m_nLast);
    }

private:
    static constexpr int kForEver = -1;

    Failing(int first, int last) : m_nFirst(first), m_nLast(last) {}

    int m_nFirst;
    int m_nLast;
    int m_nCalls = 0;
};
