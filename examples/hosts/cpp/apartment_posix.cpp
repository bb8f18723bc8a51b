#include "apartment.hpp"

Apartment::Apartment() = default;

Apartment::~Apartment() = default;
