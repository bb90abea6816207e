#pragma once

#include "copy/CCopyWalk.h"

#include <QString>

#include <memory>

class CCopyWork;
class CDirNode;

/** Which way a copy goes. */
class CWalkChoice
{
public:
    /** The walk that the root asks for, into the folder strDest. root and work outlive it. */
    static std::unique_ptr<CCopyWalk> Of(CDirNode& root, CCopyWork& work, const QString& strDest);
};
