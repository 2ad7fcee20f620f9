// Placeholder until the host boundary lands.
