#include "apartment.hpp"

#include <windows.h>

#include <objbase.h>

#include <stdexcept>

Apartment::Apartment() {
    if (FAILED(CoInitialize(nullptr))) throw std::runtime_error("COM cannot be initialised");
}

Apartment::~Apartment() { CoUninitialize(); }
