"""Shows the classes of VemData in gdb: printers for values, and commands for masks and images.

The modules, each above those before it:

  memory    reads blocks of the debugged program through the table of layouts
  text      writes numbers and texts
  runs      what a set of runs covers
  views     what is shown of each class (views_values, views_raster, views_shapes, views_results)
  printers  hands the views to gdb
  png       writes pictures
  calls     asks the library in a process for a mask
  commands  vem-print, vem-save, vem-show
"""
