#include "app/CGetScreenPixel.h"

CGetScreenPixel::CGetScreenPixel()
    : QObject(nullptr)
{
}

int CGetScreenPixel::WholePoints(double fWidth) { return int(float(fWidth)); }

void CGetScreenPixel::HideWindowTitle(unsigned long long) { }
