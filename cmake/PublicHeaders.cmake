# The headers that are installed, and their folders, below which they keep their places. A consumer
# writes <zorv/DOM/CellInfo.h> where the sources write "DOM/CellInfo.h"; see RootIncludes.cmake.

target_sources(
  ZorvHost
  PUBLIC FILE_SET HEADERS
         BASE_DIRS host
         FILES host/DOM/A1Notation.h
               host/DOM/AxisIds.h
               host/DOM/Cell.h
               host/DOM/CellBlock.h
               host/DOM/CellInfo.h
               host/DOM/CellRangeIt.h
               host/DOM/CellStore.h
               host/DOM/CellStyle.h
               host/DOM/ColumnSet.h
               host/DOM/ConditionalFormat.h
               host/DOM/ConditionalFormatOperator.h
               host/DOM/FormulaSyntaxTree/Expr.h
               host/DOM/FormulaSyntaxTree/Node.h
               host/DOM/Ids.h
               host/DOM/RowBlocks.h
               host/DOM/SetProperties.h
               host/DOM/SharedStyle.h
               host/DOM/StyleProps.h
               host/DOM/Styles.h
               host/DOM/Table.h
               host/DOM/TableRangeByID.h
               host/DOM/TrackChangesViewMode.h
               host/FormulaModel/ArrayFormulaIndices.h
               host/FormulaModel/DocTableIndex.h
               host/FormulaModel/FormulaArray.h
               host/FormulaModel/FormulaException.h
               host/FormulaModel/FormulaValue.h
               host/FormulaModel/FormulaValueAccess.h
               host/FormulaModel/ValueKey.h
               host/Formulas/CalcExpr.h
               host/Formulas/CalcResult.h
               host/Formulas/CalcShiftedExpr.h
               host/Formulas/Context.h
               host/Formulas/ContextProvider.h
               host/Formulas/CriterionText.h
               host/Formulas/EvaluationLimitError.h
               host/Formulas/EvaluationSession.h
               host/Formulas/FindDependencies.h
               host/Formulas/FindReferences.h
               host/Formulas/FindUnresolved.h
               host/Formulas/FoldExpr.h
               host/Formulas/FollowedAreas.h
               host/Formulas/FormulaParseError.h
               host/Formulas/FunctionNames.h
               host/Formulas/ListObject.h
               host/Formulas/LookupCache.h
               host/Formulas/OneTableDocument.h
               host/Formulas/ParseExpr.h
               host/Formulas/PositionDependence.h
               host/Formulas/RuntimeDependenciesResolver.h
               host/Formulas/ShiftExpr.h
               host/Formulas/ShiftFormulaText.h
               host/Formulas/TableContext.h
               host/Formulas/TraceExpr.h
               host/Formulas/WriteExpr.h
               host/OfficeUtils/Clock.h
               host/OfficeUtils/DateTime.h
               host/OfficeUtils/FormulaValueCast.h
               host/OfficeUtils/LocaleContext.h
               host/OfficeUtils/Moment.h
               host/OfficeUtils/NumberFormat.h
               host/OfficeUtils/PinnedMoment.h
               host/OfficeUtils/SerialDate.h
               host/OfficeUtils/TimeZone.h
               host/Utils/Assert.h
               host/Utils/CaseFolding.h
               host/Utils/CellIndex.h
               host/Utils/CheckedPtr.h
               host/Utils/Exceptions.h
               host/Utils/Export.h
               host/Utils/FloatNumber.h
               host/Utils/HashPartitions.h
               host/Utils/IDHolder.h
               host/Utils/NumCast.h
               host/Utils/PtrUtils.h
               host/Utils/TableRange.h
               host/Utils/TaggedValue.h
               host/Utils/UUID.h
               host/Utils/WorkBudget.h)

target_sources(
  ConditionalFormatters
  PUBLIC FILE_SET HEADERS
         BASE_DIRS .
         FILES ConditionalFormatters/CndFrmt_CellExplanation.h
               ConditionalFormatters/CndFrmt_CellWorker.h
               ConditionalFormatters/CndFrmt_Change.h
               ConditionalFormatters/CndFrmt_ChangeChecks.h
               ConditionalFormatters/CndFrmt_ConditionOperands.h
               ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h
               ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h
               ConditionalFormatters/CndFrmt_Export.h
               ConditionalFormatters/CndFrmt_LiveResolver.h
               ConditionalFormatters/CndFrmt_LiveView.h
               ConditionalFormatters/CndFrmt_OperatorsFactory.h
               ConditionalFormatters/CndFrmt_StyleHierarchy.h
               ConditionalFormatters/CndFrmt_StyleRun.h
               ConditionalFormatters/CndFrmt_TablePass.h
               ConditionalFormatters/CndFrmt_TableResolver.h
               ConditionalFormatters/CndFrmt_ValueContextProvider.h
               ConditionalFormatters/Operators/CndFrmt_AboveAverageOperator.h
               ConditionalFormatters/Operators/CndFrmt_BinaryOperator.h
               ConditionalFormatters/Operators/CndFrmt_FormulaExprCalculator.h
               ConditionalFormatters/Operators/CndFrmt_FormulaValueMultiset.h
               ConditionalFormatters/Operators/CndFrmt_NullaryOperator.h
               ConditionalFormatters/Operators/CndFrmt_Operator.h
               ConditionalFormatters/Operators/CndFrmt_TextOperator.h
               ConditionalFormatters/Operators/CndFrmt_TopBottomOperator.h
               ConditionalFormatters/Operators/CndFrmt_UnaryOperator.h
               ConditionalFormatters/Operators/CndFrmt_UniquenessOperator.h)

set(installed_libraries ZorvHost ConditionalFormatters)
if(TARGET ZorvWorkbook)
  target_sources(
    ZorvVisuals
    PUBLIC FILE_SET HEADERS
           BASE_DIRS .
           FILES visuals/CellVisuals.h
                 visuals/ColourScale.h
                 visuals/DataBar.h
                 visuals/Export.h
                 visuals/IconSet.h
                 visuals/Threshold.h
                 visuals/ThresholdError.h
                 visuals/VisualFormat.h
                 visuals/VisualResolver.h
                 visuals/VisualSources.h)

  target_sources(
    ZorvWorkbook
    PUBLIC FILE_SET HEADERS
           BASE_DIRS .
           FILES workbook/Document.h
                 workbook/DocumentContextProvider.h
                 workbook/DocumentResolver.h
                 workbook/DocumentValueProvider.h
                 workbook/Export.h
                 workbook/Finding.h
                 workbook/Limits.h
                 workbook/LoadError.h
                 workbook/LoadWorkbook.h
                 workbook/OwnStyle.h
                 workbook/PageLayout.h
                 workbook/RichText.h
                 workbook/Rule.h
                 workbook/Semantics.h
                 workbook/Sheet.h
                 workbook/SheetResolver.h
                 workbook/SheetRules.h
                 workbook/TableStyle.h)
  list(APPEND installed_libraries ZorvVisuals ZorvWorkbook)
endif()

# Each of them must compile by itself: the target all_verify_interface_header_sets.
set_target_properties(${installed_libraries} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON)
