"""Takes the figures of Brimwick beside those of other programs, and writes them down."""
