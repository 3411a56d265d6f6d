#include "editor/metrics.h"

CEditorMetrics::CEditorMetrics() : m_lineSpace(2), m_tabColumn(4) {}
