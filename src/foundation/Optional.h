#ifndef TARNWICK_FOUNDATION_OPTIONAL_H
#define TARNWICK_FOUNDATION_OPTIONAL_H

#include <cstddef>
#include <new>
#include <type_traits>
#include <utility>

/** Small values that every subsystem may use. */
namespace utility {

/**
 * @brief Holds one value of type T or nothing.
 *
 * The result of functions that can fail, and an argument that may be left out. T needs no default constructor and may
 * be over-aligned; an operation can be called if T has what it asks of T.
 *
 * Layout: the two fields below, in their order; it is part of the interface, since an Optional crosses the boundary of
 * the library by value. A value is told by the pointer alone, which points into the object itself. An Optional can
 * therefore never be moved by copying its bytes: do not declare it relocatable to Qt's containers.
 *
 * Exceptions: none of its own. If an operation of T throws while a value is made, the Optional is left empty (or is
 * not made at all); if one throws while a value is assigned over another, the old value stays as T left it.
 *
 * Threads: a plain value, without synchronisation.
 */
template <typename T>
class Optional
{
public:
    /** Makes an empty Optional. */
    Optional() noexcept = default;

    /** Makes an Optional that holds a copy of @p value; implicit, so that functions can return the bare value. */
    Optional(const T &value)
        : valuePointer(construct(value))
    {
    }

    /** Makes an Optional that holds @p value, moved. */
    Optional(T &&value) noexcept(std::is_nothrow_move_constructible_v<T>)
        : valuePointer(construct(std::move(value)))
    {
    }

    /** Copies the value of @p source, if there is one. */
    Optional(const Optional &source)
        : valuePointer(source.hasValue() ? construct(source.getValue()) : nullptr)
    {
    }

    /** Moves the value of @p source, if there is one; @p source goes on holding the moved-from T. */
    Optional(Optional &&source) noexcept(std::is_nothrow_move_constructible_v<T>)
        : valuePointer(source.hasValue() ? construct(std::move(source.getValue())) : nullptr)
    {
    }

    ~Optional() { clear(); }

    /**
     * Assigns @p value to the value that is held, or else holds a copy of it. To empty an Optional or to move a value
     * into it, assign an Optional; braces alone, "= {}", assign a default T or are ambiguous.
     */
    Optional &operator=(const T &value)
    {
        assign(value);
        return *this;
    }

    /** Takes over a copy of what @p source holds, nothing included. Assignment to itself changes nothing. */
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
     * Takes over what @p source holds, nothing included; a value is moved, and @p source goes on holding the
     * moved-from T. Assignment to itself changes nothing.
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

    /** Returns whether there is a value. */
    bool hasValue() const noexcept { return valuePointer != nullptr; }

    /** Returns the value. There has to be one: ask hasValue() first. */
    T &getValue() noexcept { return *valuePointer; }

    /** Returns the value. There has to be one: ask hasValue() first. */
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
    T *valuePointer = nullptr; // null, or the address of this object's own storage
};

} // namespace utility

#endif
