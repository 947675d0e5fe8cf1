#ifndef TARNWICK_FOUNDATION_OPTIONAL_H
#define TARNWICK_FOUNDATION_OPTIONAL_H

#include <cstddef>
#include <new>
#include <type_traits>
#include <utility>

/** Small types that every subsystem may use. */
namespace utility {

/**
 * @brief Holds one value of type T or nothing.
 *
 * Used as the result of functions that can fail, and for arguments that may be left out. T may be over-aligned and
 * needs no default constructor: each function requires only the operations of T that it uses.
 *
 * Layout: an Optional is passed by value across the library boundary, so its two fields and their order are part of the
 * binary interface. The pointer is null when the Optional is empty; otherwise it is the address of `storage`. Therefore
 * an Optional must not be moved by copying its bytes: do not declare it relocatable with Q_DECLARE_TYPEINFO.
 *
 * Exceptions: only those of T's operations. If the construction of a value throws, the Optional remains empty. If an
 * assignment to an existing value throws, the state of the value depends on T.
 *
 * Threads: not synchronised.
 */
template <typename T>
class Optional
{
public:
    /** Creates an empty Optional. */
    Optional() noexcept = default;

    /** Creates an Optional that holds a copy of @p value. Implicit, so that functions can return a T. */
    Optional(const T &value)
        : valuePointer(construct(value))
    {
    }

    /** Creates an Optional and moves @p value into it. */
    Optional(T &&value) noexcept(std::is_nothrow_move_constructible_v<T>)
        : valuePointer(construct(std::move(value)))
    {
    }

    /** Copies the value of @p source, if it has one. */
    Optional(const Optional &source)
        : valuePointer(source.hasValue() ? construct(source.getValue()) : nullptr)
    {
    }

    /** Moves the value of @p source, if it has one. @p source then still holds the moved-from T. */
    Optional(Optional &&source) noexcept(std::is_nothrow_move_constructible_v<T>)
        : valuePointer(source.hasValue() ? construct(std::move(source.getValue())) : nullptr)
    {
    }

    ~Optional() { clear(); }

    /**
     * Assigns @p value to the current value, or stores a copy if the Optional is empty. To clear an Optional, assign
     * `Optional<T>()`: `= {}` assigns a default T or is ambiguous.
     */
    Optional &operator=(const T &value)
    {
        assign(value);
        return *this;
    }

    /** Copies the value of @p source, or clears this Optional if @p source is empty. Safe for self-assignment. */
    Optional &operator=(const Optional &source)
    {
        if (this == &source) {
            return *this;
        }
        if (source.hasValue()) {
            assign(source.getValue());
        } else {
            clear();
        }
        return *this;
    }

    /**
     * Moves the value of @p source, or clears this Optional if @p source is empty. @p source then still holds the
     * moved-from T. Safe for self-assignment.
     */
    Optional &operator=(Optional &&source) noexcept(
        std::is_nothrow_move_constructible_v<T> &&std::is_nothrow_move_assignable_v<T>)
    {
        if (this == &source) {
            return *this;
        }
        if (source.hasValue()) {
            assign(std::move(source.getValue()));
        } else {
            clear();
        }
        return *this;
    }

    /** Returns whether the Optional holds a value. */
    bool hasValue() const noexcept { return valuePointer != nullptr; }

    /** Returns the value. Requires hasValue(). */
    T &getValue() noexcept { return *valuePointer; }

    /** Returns the value. Requires hasValue(). */
    const T &getValue() const noexcept { return *valuePointer; }

private:
    template <typename Value>
    T *construct(Value &&value)
    {
        return ::new (static_cast<void *>(storage)) T(std::forward<Value>(value));
    }

    template <typename Value>
    void assign(Value &&value)
    {
        if (hasValue()) {
            *valuePointer = std::forward<Value>(value);
        } else {
            valuePointer = construct(std::forward<Value>(value));
        }
    }

    void clear() noexcept
    {
        if (hasValue()) {
            valuePointer->~T();
            valuePointer = nullptr;
        }
    }

    alignas(T) std::byte storage[sizeof(T)] = {};
    T *valuePointer = nullptr; // null or the address of storage
};

} // namespace utility

#endif
