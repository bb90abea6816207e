#pragma once

/** Makes the commands that the program runs by name ("diskutil", "caffeinate") available. */
class CCommandPath
{
public:
    /**
     * Appends the folder of the re-provided commands to PATH where the system
     * has none of its own; a command that the system has comes first. Call it
     * once, after the application object exists and before the first process.
     */
    static void Append();
};
