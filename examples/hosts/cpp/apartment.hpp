// What the thread of a host needs from its system.
#pragma once

/// Initialises COM for the thread where there is COM: on Windows the library's XML and HTTP come from it.
class Apartment {
public:
    Apartment();
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
    ~Apartment();
};
