// The drawing SDK's dynamic array.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

/// Marks an array whose elements are objects with constructors (as against plain memory).
template <class T>
struct OdObjectsAllocator {
  using value_type = T;
};

/// A growing sequence of `T`.
template <class T, class Allocator = OdObjectsAllocator<T>>
class OdArray {
 public:
  using size_type = std::size_t;
  using iterator = typename std::vector<T>::iterator;
  using const_iterator = typename std::vector<T>::const_iterator;

  OdArray() = default;

  size_type size() const { return elements.size(); }
  size_type length() const { return elements.size(); }
  bool isEmpty() const { return elements.empty(); }
  bool empty() const { return elements.empty(); }
  void clear() { elements.clear(); }
  void reserve(size_type capacity) { elements.reserve(capacity); }
  void append(const T& value) { elements.push_back(value); }
  void append(T&& value) { elements.push_back(std::move(value)); }
  void push_back(const T& value) { elements.push_back(value); }
  void push_back(T&& value) { elements.push_back(std::move(value)); }
  T& operator[](size_type i) { return elements[i]; }
  const T& operator[](size_type i) const { return elements[i]; }
  iterator begin() { return elements.begin(); }
  iterator end() { return elements.end(); }
  const_iterator begin() const { return elements.begin(); }
  const_iterator end() const { return elements.end(); }

 private:
  std::vector<T> elements;
};
