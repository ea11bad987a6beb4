#include "IVemROIAPara.h"

IVemROIArrayPara::IVemROIArrayPara() = default;
IVemROIArrayPara::IVemROIArrayPara(const IVemROIArrayPara& other) = default;
IVemROIArrayPara& IVemROIArrayPara::operator=(const IVemROIArrayPara& other) = default;
IVemROIArrayPara::~IVemROIArrayPara() = default;

bool IVemROIArrayPara::IsMask() const { return Type == VemROIMask; }
