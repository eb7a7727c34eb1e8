# Writes OUT: a C++ source with the text of each .sql file of DIR.
set(text "namespace schema::detail {\n")
foreach(name component product)
  file(READ ${DIR}/${name}.sql sql)
  string(APPEND text "extern const char* const ${name}Sql;\nconst char* const ${name}Sql = R\"ddl(${sql})ddl\";\n")
endforeach()
string(APPEND text "}  // namespace schema::detail\n")
file(WRITE ${OUT} "${text}")
